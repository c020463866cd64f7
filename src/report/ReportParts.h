#pragma once

#include "StrategyReport.h"

// The pieces computeReport puts together.

// Figures over the closed trades, in book order.
TradeFigures tradeFigures(const std::vector<ReportTrade> &trades);
std::vector<ExitFigures> exitFigures(const std::vector<ReportTrade> &trades);
// Count, win rate and average return by year of the sale date; the returns
// of the account and the market are filled in later.
std::vector<YearFigures> yearTradeFigures(const std::vector<ReportTrade> &trades);
std::vector<HistogramBin> returnHistogram(const std::vector<ReportTrade> &trades);

// The account's day by day, on the calendar.
struct AccountCurve {
    std::vector<double> equity;
    std::vector<double> cash;
    std::vector<int> positions;
    int exposedDays = 0;
    double costs = 0;
    int skippedBuys = 0;
};
AccountCurve followTrades(const std::vector<ReportTrade> &trades, const ReportMarket &market,
                          const ReportCalendar &calendar, const ReportSettings &settings);

// The calendar of every stock's dates, and on each of its days the level of
// the equal-weight market, starting at 1.
struct MarketDays {
    ReportCalendar calendar;
    std::vector<double> index;
};
MarketDays marketDays(const ReportMarket &market);

// The deepest fall of a curve from its running peak, in percent.
struct Drawdown {
    Figure maximum;                            // none for an empty curve
    int peak = -1, trough = -1, recovery = -1; // calendar indices; -1: none
    int longestUnderwater = 0;                 // calendar days below an earlier peak
    std::vector<double> series;                // percent below the peak, per day
};
Drawdown drawdownOf(const std::vector<double> &curve);

// Percent changes of a curve from `start` to its end, compounded over the
// calendar's span; none when the span is not a day.
Figure totalReturn(double start, double end);
Figure annualReturn(double start, double end, const ReportCalendar &calendar);

struct RiskFigures {
    Figure volatility, sharpe, sortino;
};
// From the daily returns after the first day.
RiskFigures riskFigures(const std::vector<double> &curve);

// The change over each period named by the first `prefix` characters of the
// date ("yyyy": years, "yyyy-MM": months), from the last value of the period
// before (or `start`) to the period's last value.
std::vector<std::pair<QString, Figure>>
periodReturns(const ReportCalendar &calendar, const std::vector<double> &curve, double start, int prefix);
