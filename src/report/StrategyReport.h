#pragma once

#include "ReportMarket.h"
#include "ReportTrade.h"
#include "engine/RuleEffects.h"
#include "script/ReportSettings.h"

#include <QString>

#include <cmath>
#include <optional>
#include <vector>

// A figure that may have no value: no losses give no profit factor, one day
// gives no volatility. Never infinite, never not-a-number.
using Figure = std::optional<double>;

// The value, or none when it is not a finite number.
inline Figure figure(double value) { return std::isfinite(value) ? Figure(value) : std::nullopt; }

struct TradeFigures {
    int count = 0;
    int summaryCount = 0; // the summary box's count: it leaves out intraday take-profits
    int wins = 0;
    int losses = 0;
    Figure winRate, averageReturn, medianReturn, averageWin, averageLoss, payoffRatio, profitFactor;
    Figure best, worst;
    int maxWinStreak = 0;
    int maxLossStreak = 0;
    Figure averageHoldDays, medianHoldDays;
};

struct ExitFigures {
    TradeExit exit;
    int count = 0;
    Figure winRate, averageReturn;
};

struct YearFigures {
    QString year;
    int count = 0; // trades sold in that year
    Figure winRate, averageReturn, accountReturn, marketReturn;
};

struct MonthFigures {
    QString month; // "yyyy-MM"
    Figure accountReturn, marketReturn;
};

struct HistogramBin {
    long long from = 0; // returns in [from, from + 1) percent
    int count = 0;
};

struct AccountFigures {
    double capital = 0;
    double finalEquity = 0;
    Figure totalReturn, annualReturn, maxDrawdown;
    QString maxDrawdownPeak, maxDrawdownTrough, maxDrawdownRecovery; // empty: none
    int longestUnderwaterDays = 0;
    Figure volatility, sharpe, sortino, calmar, exposure;
    double costs = 0;
    int skippedBuys = 0;
};

struct MarketFigures {
    Figure totalReturn, annualReturn, maxDrawdown, excessReturn;
};

// One calendar day of the account and of the market.
struct DailyFigures {
    QString date;
    double equity = 0;
    double cash = 0;
    int positions = 0;   // open at the day's close
    double drawdown = 0; // percent below the highest equity so far
    double market = 0;   // the capital held in the equal-weight market
};

struct StrategyReport {
    ReportSettings settings;
    TradeFigures trades;
    std::vector<ExitFigures> byExit; // the four exits, always all of them
    std::vector<YearFigures> byYear;
    std::vector<HistogramBin> histogram;
    AccountFigures account;
    MarketFigures market;
    std::vector<MonthFigures> monthly;
    std::vector<DailyFigures> daily;
    // What the real-account rules changed; only for a run that followed any,
    // so a report of a run without them stays as it was.
    std::optional<RuleEffects> rules;
};

// The whole report of a run: its trades in book order and the closes of the
// stocks it simulated.
StrategyReport computeReport(const std::vector<ReportTrade> &trades, const ReportMarket &market,
                             const ReportSettings &settings);
