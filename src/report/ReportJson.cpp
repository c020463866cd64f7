#include "ReportJson.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

QJsonValue json(const Figure &value) { return value ? QJsonValue(*value) : QJsonValue(QJsonValue::Null); }
QJsonValue json(double value) { return json(figure(value)); }
QJsonValue json(const QString &date)
{
    return date.isEmpty() ? QJsonValue(QJsonValue::Null) : QJsonValue(date);
}

// Years as numbers; a date text of another form keeps its own text.
QJsonValue yearJson(const QString &year)
{
    bool number = false;
    const int value = year.toInt(&number);
    return number ? QJsonValue(value) : QJsonValue(year);
}

QJsonObject tradesJson(const TradeFigures &t)
{
    return {{"count", t.count},
            {"summaryCount", t.summaryCount},
            {"wins", t.wins},
            {"losses", t.losses},
            {"winRate", json(t.winRate)},
            {"averageReturn", json(t.averageReturn)},
            {"medianReturn", json(t.medianReturn)},
            {"averageWin", json(t.averageWin)},
            {"averageLoss", json(t.averageLoss)},
            {"payoffRatio", json(t.payoffRatio)},
            {"profitFactor", json(t.profitFactor)},
            {"best", json(t.best)},
            {"worst", json(t.worst)},
            {"maxWinStreak", t.maxWinStreak},
            {"maxLossStreak", t.maxLossStreak},
            {"averageHoldDays", json(t.averageHoldDays)},
            {"medianHoldDays", json(t.medianHoldDays)}};
}

QJsonObject accountJson(const AccountFigures &a)
{
    return {{"capital", json(a.capital)},
            {"finalEquity", json(a.finalEquity)},
            {"totalReturn", json(a.totalReturn)},
            {"annualReturn", json(a.annualReturn)},
            {"maxDrawdown", json(a.maxDrawdown)},
            {"maxDrawdownPeak", json(a.maxDrawdownPeak)},
            {"maxDrawdownTrough", json(a.maxDrawdownTrough)},
            {"maxDrawdownRecovery", json(a.maxDrawdownRecovery)},
            {"longestUnderwaterDays", a.longestUnderwaterDays},
            {"volatility", json(a.volatility)},
            {"sharpe", json(a.sharpe)},
            {"sortino", json(a.sortino)},
            {"calmar", json(a.calmar)},
            {"exposure", json(a.exposure)},
            {"costs", json(a.costs)},
            {"skippedBuys", a.skippedBuys}};
}

QJsonArray tablesJson(const StrategyReport &r, QJsonObject &byExit, QJsonArray &histogram,
                      QJsonArray &monthly)
{
    for (const ExitFigures &e : r.byExit)
        byExit.insert(tradeExitText(e.exit), QJsonObject{{"count", e.count},
                                                         {"winRate", json(e.winRate)},
                                                         {"averageReturn", json(e.averageReturn)}});
    for (const HistogramBin &bin : r.histogram)
        histogram.append(
            QJsonObject{{"from", double(bin.from)}, {"to", double(bin.from + 1)}, {"count", bin.count}});
    for (const MonthFigures &m : r.monthly)
        monthly.append(QJsonObject{{"month", m.month},
                                   {"accountReturn", json(m.accountReturn)},
                                   {"marketReturn", json(m.marketReturn)}});
    QJsonArray years;
    for (const YearFigures &y : r.byYear)
        years.append(QJsonObject{{"year", yearJson(y.year)},
                                 {"count", y.count},
                                 {"winRate", json(y.winRate)},
                                 {"averageReturn", json(y.averageReturn)},
                                 {"accountReturn", json(y.accountReturn)},
                                 {"marketReturn", json(y.marketReturn)}});
    return years;
}

} // namespace

QByteArray reportJson(const StrategyReport &r)
{
    QJsonObject byExit;
    QJsonArray histogram, monthly, daily;
    const QJsonArray byYear = tablesJson(r, byExit, histogram, monthly);
    for (const DailyFigures &d : r.daily)
        daily.append(QJsonObject{{"date", d.date},
                                 {"equity", json(d.equity)},
                                 {"cash", json(d.cash)},
                                 {"positions", d.positions},
                                 {"drawdown", json(d.drawdown)},
                                 {"market", json(d.market)}});
    const MarketFigures &m = r.market;
    QJsonObject root{{"trades", tradesJson(r.trades)},
                     {"byExit", byExit},
                     {"byYear", byYear},
                     {"histogram", histogram},
                     {"account", accountJson(r.account)},
                     {"market", QJsonObject{{"totalReturn", json(m.totalReturn)},
                                            {"annualReturn", json(m.annualReturn)},
                                            {"maxDrawdown", json(m.maxDrawdown)},
                                            {"excessReturn", json(m.excessReturn)}}},
                     {"monthly", monthly},
                     {"daily", daily}};
    if (r.rules)
        root.insert("rules", QJsonObject{{"t1Delayed", r.rules->t1Delayed},
                                         {"limitUpNotBought", r.rules->limitUpNotBought},
                                         {"limitDownNotSold", r.rules->limitDownNotSold},
                                         {"stopIntraday", r.rules->stopIntraday}});
    return QJsonDocument(root).toJson(QJsonDocument::Indented);
}

QByteArray equityCsv(const StrategyReport &r)
{
    QByteArray csv = "date,equity,cash,positions,drawdown,market\n";
    const auto number = [](double value) {
        return std::isfinite(value) ? QByteArray::number(value, 'f', 2) : QByteArray();
    };
    for (const DailyFigures &d : r.daily) {
        csv += d.date.toUtf8() + ',' + number(d.equity) + ',' + number(d.cash) + ',' +
               QByteArray::number(d.positions) + ',' + QByteArray::number(d.drawdown, 'f', 4) + ',' +
               number(d.market) + '\n';
    }
    return csv;
}
