#pragma once

#include "engine/BacktestRun.h"

#include <QString>

#include <memory>

// Sets up a run of a script file as every command that runs one does: the
// configuration from `configPath`, else "config.conf", else the built-in
// copy; then the script's own lines; then `dataDir`. Prints what went wrong
// and returns its exit code, or returns Ok with `run` ready to start.
int openScriptRun(const QString &scriptPath, const QString &configPath, const QString &dataDir,
                  std::unique_ptr<BacktestRun> &run);
