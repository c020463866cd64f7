#pragma once

#include <QString>

// Text for the terminal: always UTF-8, whatever the files use.
namespace CliOutput {

void out(const QString &text);
void err(const QString &text);

// A progress bar on stderr, drawn only when stderr is a terminal.
class ProgressBar {
public:
    ProgressBar();
    ~ProgressBar();
    void show(int percent);
    // Erases the bar, so that a line can be written; the next show() draws it again.
    void clear();

private:
    bool m_enabled;
    int m_shown = -1;
};

} // namespace CliOutput

// Python-style shortest text of a double: the fewest digits that read back
// exactly, fixed for exponents -4…15, with ".0" on whole numbers.
QString shortestReal(double value);
