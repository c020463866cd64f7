#pragma once

#include <QString>
#include <QStringList>

class QCommandLineParser;

// Each command receives its own arguments (the program name first) and
// returns the process's exit code.
namespace Commands {

enum ExitCode {
    Ok = 0,
    UsageError = 1,
    CompileError = 2,
    NoData = 3,
    DownloadFailed = 4,
    Unwritable = 5,
    OutOfMemory = 6,
    DataProblems = 7
};

int backtest(const QStringList &arguments);
int screen(const QStringList &arguments);
int eval(const QStringList &arguments);
int download(const QStringList &arguments);
int check(const QStringList &arguments);
int convert(const QStringList &arguments);
int sweep(const QStringList &arguments);
int sweepMerge(const QStringList &arguments);

// Prints why the options were refused (or the help text asked for) and
// returns the exit code that goes with it.
int refuseOptions(const QString &problem, const QStringList &arguments);

// Parses ARGUMENTS: empty when they are good, else the text to refuse them
// with (the parser's complaint, or the help asked for).
QString parse(QCommandLineParser &parser, const QStringList &arguments);

// As parse, for a command of one positional argument, which lands in VALUE;
// MISSING says what is wanted when it is not given once.
QString parseOne(QCommandLineParser &parser, const QStringList &arguments, const QString &missing,
                 QString &value);

// As parseOne, for a command that runs the strategy script named.
QString parseScript(QCommandLineParser &parser, const QStringList &arguments, QString &script);

} // namespace Commands
