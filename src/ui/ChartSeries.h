#pragma once

#include "indicators/IndicatorCache.h"
#include "market/Stock.h"

#include <QStringList>
#include <QVector>

#include <map>
#include <vector>

// Keys on the chart's time axis are seconds, one day per bar position, so
// that weekends and holidays leave no gaps between candles.
constexpr double kChartDay = 86400;

// What the chart keeps of the stock it shows: the bars, their dates as the
// trades read them, and the lines of script terms over the whole history,
// computed on first use by the terms' own evaluators.
class ChartSeries {
public:
    ChartSeries() = default;
    explicit ChartSeries(const StockSeries &stock);
    ChartSeries(const ChartSeries &) = delete;
    ChartSeries &operator=(const ChartSeries &) = delete;
    ChartSeries(ChartSeries &&) = default;
    ChartSeries &operator=(ChartSeries &&) = default;

    QString code;
    QStringList dates;
    std::vector<Stock> bars; // without their dates: those point into the stock's own text
    QVector<double> keys;

    int size() const { return int(bars.size()); }
    bool empty() const { return bars.empty(); }
    // The first bar from `from` on dated `date`, or -1.
    int indexOf(const QString &date, int from = 0) const;
    // The bar under a key, or -1 when the key is beyond both ends.
    int indexAt(double key) const;
    // The term's value on every bar (NaN where it has none); empty when it does not compile.
    const std::vector<double> &line(const QString &term);

private:
    IndicatorCache m_cache;
    std::map<QString, std::vector<double>> m_lines;
};
