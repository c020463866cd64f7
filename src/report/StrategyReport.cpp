#include "StrategyReport.h"

#include "ReportParts.h"

#include <map>

namespace {

QString dateAt(const ReportCalendar &calendar, int index)
{
    return index >= 0 ? calendar.dates[size_t(index)] : QString();
}

AccountFigures accountFigures(const AccountCurve &curve, const Drawdown &drawdown,
                              const ReportCalendar &calendar, const ReportSettings &settings)
{
    AccountFigures a;
    a.capital = settings.capital;
    a.finalEquity = curve.equity.empty() ? settings.capital : curve.equity.back();
    a.totalReturn = totalReturn(a.capital, a.finalEquity);
    a.annualReturn = annualReturn(a.capital, a.finalEquity, calendar);
    a.maxDrawdown = drawdown.maximum;
    if (drawdown.maximum.value_or(0) > 0) {
        a.maxDrawdownPeak = dateAt(calendar, drawdown.peak);
        a.maxDrawdownTrough = dateAt(calendar, drawdown.trough);
        a.maxDrawdownRecovery = dateAt(calendar, drawdown.recovery);
    }
    a.longestUnderwaterDays = drawdown.longestUnderwater;
    const RiskFigures risk = riskFigures(curve.equity);
    a.volatility = risk.volatility;
    a.sharpe = risk.sharpe;
    a.sortino = risk.sortino;
    if (a.annualReturn && a.maxDrawdown && *a.maxDrawdown > 0)
        a.calmar = figure(*a.annualReturn / *a.maxDrawdown);
    if (calendar.size() > 0)
        a.exposure = double(curve.exposedDays) / calendar.size() * 100;
    a.costs = curve.costs;
    a.skippedBuys = curve.skippedBuys;
    return a;
}

// Years with trades or with days, each with its account and market return.
void addYearReturns(std::vector<YearFigures> &years, const std::vector<std::pair<QString, Figure>> &account,
                    const std::vector<std::pair<QString, Figure>> &market)
{
    std::map<QString, YearFigures> byYear;
    for (YearFigures &year : years)
        byYear[year.year] = std::move(year);
    for (size_t i = 0; i < account.size(); ++i) {
        YearFigures &year = byYear[account[i].first];
        year.year = account[i].first;
        year.accountReturn = account[i].second;
        year.marketReturn = market[i].second;
    }
    years.clear();
    for (auto &[name, year] : byYear)
        years.push_back(std::move(year));
}

} // namespace

StrategyReport computeReport(const std::vector<ReportTrade> &trades, const ReportMarket &market,
                             const ReportSettings &settings)
{
    StrategyReport report;
    report.settings = settings;
    report.trades = tradeFigures(trades);
    report.byExit = exitFigures(trades);
    report.byYear = yearTradeFigures(trades);
    report.histogram = returnHistogram(trades);

    const MarketDays days = marketDays(market);
    const ReportCalendar &calendar = days.calendar;
    const std::vector<double> &index = days.index;
    const AccountCurve curve = followTrades(trades, market, calendar, settings);
    const Drawdown drawdown = drawdownOf(curve.equity);
    report.account = accountFigures(curve, drawdown, calendar, settings);

    const double indexEnd = index.empty() ? 1 : index.back();
    report.market.totalReturn = totalReturn(1, indexEnd);
    report.market.annualReturn = annualReturn(1, indexEnd, calendar);
    report.market.maxDrawdown = drawdownOf(index).maximum;
    if (report.account.totalReturn && report.market.totalReturn)
        report.market.excessReturn = *report.account.totalReturn - *report.market.totalReturn;

    addYearReturns(report.byYear, periodReturns(calendar, curve.equity, settings.capital, 4),
                   periodReturns(calendar, index, 1, 4));
    const auto accountMonths = periodReturns(calendar, curve.equity, settings.capital, 7);
    const auto marketMonths = periodReturns(calendar, index, 1, 7);
    for (size_t i = 0; i < accountMonths.size(); ++i)
        report.monthly.push_back({accountMonths[i].first, accountMonths[i].second, marketMonths[i].second});

    for (int day = 0; day < calendar.size(); ++day) {
        const size_t i = size_t(day);
        report.daily.push_back({calendar.dates[i], curve.equity[i], curve.cash[i], curve.positions[i],
                                drawdown.series[i], settings.capital * index[i]});
    }
    return report;
}
