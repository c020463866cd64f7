#include "ReportParts.h"

#include <QDate>

#include <algorithm>

Drawdown drawdownOf(const std::vector<double> &curve)
{
    Drawdown d;
    if (curve.empty())
        return d;
    d.maximum = 0;
    double peak = curve.front();
    int peakDay = 0, underwater = 0;
    for (int day = 0; day < int(curve.size()); ++day) {
        const double value = curve[size_t(day)];
        if (value >= peak) {
            // Back at the top: the deepest fall so far has recovered today.
            if (d.trough >= 0 && d.recovery < 0 && d.peak == peakDay)
                d.recovery = day;
            peak = value;
            peakDay = day;
            underwater = 0;
        } else {
            d.longestUnderwater = std::max(d.longestUnderwater, ++underwater);
        }
        const double fall = peak > 0 ? (peak - value) / peak * 100 : 0;
        d.series.push_back(fall);
        if (fall > *d.maximum) {
            d.maximum = fall;
            d.peak = peakDay;
            d.trough = day;
            d.recovery = -1;
        }
    }
    return d;
}

Figure totalReturn(double start, double end) { return figure((end / start - 1) * 100); }

Figure annualReturn(double start, double end, const ReportCalendar &calendar)
{
    if (calendar.dates.empty())
        return std::nullopt;
    const QString format = QStringLiteral("yyyy-MM-dd");
    const QDate first = QDate::fromString(calendar.dates.front(), format);
    const QDate last = QDate::fromString(calendar.dates.back(), format);
    const qint64 days = first.isValid() && last.isValid() ? first.daysTo(last) : 0;
    if (days <= 0)
        return std::nullopt;
    return figure((std::pow(end / start, 365.25 / double(days)) - 1) * 100);
}

RiskFigures riskFigures(const std::vector<double> &curve)
{
    std::vector<double> returns;
    for (size_t i = 1; i < curve.size(); ++i)
        returns.push_back(curve[i] / curve[i - 1] - 1);
    RiskFigures risk;
    if (returns.size() < 2)
        return risk;
    const double n = double(returns.size());
    double sum = 0, downside = 0;
    for (double r : returns) {
        sum += r;
        downside += std::min(r, 0.0) * std::min(r, 0.0);
    }
    const double mean = sum / n;
    double squares = 0;
    for (double r : returns)
        squares += (r - mean) * (r - mean);
    const double deviation = std::sqrt(squares / (n - 1));
    const double year = std::sqrt(243.0);
    risk.volatility = figure(deviation * year * 100);
    if (deviation > 0)
        risk.sharpe = figure(mean / deviation * year);
    if (downside > 0)
        risk.sortino = figure(mean / std::sqrt(downside / n) * year);
    return risk;
}

std::vector<std::pair<QString, Figure>>
periodReturns(const ReportCalendar &calendar, const std::vector<double> &curve, double start, int prefix)
{
    std::vector<std::pair<QString, Figure>> periods;
    double before = start;
    for (int day = 0; day < calendar.size(); ++day) {
        const QString name = calendar.dates[size_t(day)].left(prefix);
        const bool last = day + 1 == calendar.size() || calendar.dates[size_t(day + 1)].left(prefix) != name;
        if (!last)
            continue;
        periods.emplace_back(name, totalReturn(before, curve[size_t(day)]));
        before = curve[size_t(day)];
    }
    return periods;
}
