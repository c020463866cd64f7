#pragma once

#include <QStringList>

// Each command receives its own arguments (the program name first) and
// returns the process's exit code.
namespace Commands {

enum ExitCode { Ok = 0, UsageError = 1, CompileError = 2, NoData = 3, DownloadFailed = 4 };

int backtest(const QStringList &arguments);
int eval(const QStringList &arguments);
int download(const QStringList &arguments);

} // namespace Commands
