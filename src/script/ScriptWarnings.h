#pragma once

#include <QString>

#include <vector>

// Something in a script or configuration text that compiles but probably
// does not do what the writer meant. Warnings never stop a run.
struct ScriptWarning {
    enum class Kind {
        NotANumber,  // a value read as a number that is not one: it reads as 0
        WrongSign,   // a stop-loss above 0 or a take-profit below 0
        UnknownKey,  // a `config.` key nothing reads; it still settles the sale settings
        NeverValued, // a term whose period leaves it without a value on every day
    };
    Kind kind;
    int line;   // 1-based
    int column; // where the questionable text starts in its line, 0-based
    int length;
    QString text;
};

// The warnings of a script or of "config.conf"'s text, line by line. Lines
// that would not compile get none: the compile error says more.
std::vector<ScriptWarning> findScriptWarnings(const QString &text);

// "第3行: …" for a terminal, with the file's name in front.
QString warningLine(const QString &fileName, const ScriptWarning &warning);
