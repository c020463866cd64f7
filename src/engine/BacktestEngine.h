#pragma once

#include "RuleEffects.h"
#include "TradeBook.h"
#include "market/Stock.h"
#include "market/StockFileList.h"
#include "script/StrategyConfig.h"

#include <functional>

// Runs a compiled strategy over listed stock files. Stocks are independent,
// so they are shared out over `jobs` threads; their trades are merged in file
// order, which makes the book the same for any number of threads.
class BacktestEngine {
public:
    // Called once per file, in file order, with the percentage done before
    // that file and its path. May be called from a worker thread.
    using Progress = std::function<void(int percent, const QString &path)>;

    // Sees the bars of every stock simulated (the files with more than six
    // days) with the file's place in the listing; called on the worker threads.
    using StockObserver = std::function<void(int fileIndex, const StockSeries &series)>;

    // `scriptText` must have compiled; `config` is the configuration after
    // compiling it.
    BacktestEngine(QString scriptText, StrategyConfig config);

    // The trades with the per-day buy limit already applied; what the
    // real-account rules changed goes to `effects` when given.
    TradeBook run(const StockFileList &files, int jobs, const Progress &progress = {},
                  const StockObserver &observer = {}, RuleEffects *effects = nullptr) const;

    // The number of worker threads when the user names none.
    static int defaultJobs();

private:
    QString m_scriptText;
    StrategyConfig m_config;
};
