#pragma once

#include "engine/BacktestRun.h"
#include "report/ReportMarket.h"
#include "script/ReportSettings.h"

// `backtest --report DIR`: keeps the closes of the stocks while the run walks
// them, then writes the report files.
class BacktestReport {
public:
    BacktestRun::StockObserver observer();

    // Writes "report.json", "equity.csv" and "report.html" into `dir`, with
    // what the real-account rules changed when the run followed any; false
    // after saying why not.
    bool write(const QString &dir, const TradeBook &book, const ReportSettings &settings,
               const std::optional<RuleEffects> &rules);

private:
    ReportMarket m_market;
};
