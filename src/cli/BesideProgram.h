#pragma once

#include <QString>

// The path of a library built beside orvel-cli, wherever the program was
// started from; QLibrary adds the suffix.
QString besideProgram(const QString &library);
