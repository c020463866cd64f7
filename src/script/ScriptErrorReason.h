#pragma once

#include <QString>

// Why a script line did not compile, in the user's words: the line number
// alone leaves a trader guessing at a name, a comma or an operator. `line`
// is the line the compiler stopped at.
QString scriptErrorReason(const QString &line);
