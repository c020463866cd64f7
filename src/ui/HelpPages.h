#pragma once

#include <QUrl>

// The help pages travel inside the program, so that help works offline.
// The browser cannot read resources; the pages are copied to a folder of
// their own under the system's temporary directory and opened from there.
namespace HelpPages {

enum Page { Help, Questions };

// The local page's address, written afresh; empty when it cannot be written.
QUrl url(Page page);

} // namespace HelpPages
