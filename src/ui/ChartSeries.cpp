#include "ChartSeries.h"

#include "market/TextFile.h"
#include "script/TermLine.h"

#include <cmath>

ChartSeries::ChartSeries(const StockSeries &stock) : code(stock.code), bars(stock.bars)
{
    dates.reserve(stock.size());
    keys.reserve(stock.size());
    for (Stock &bar : bars) {
        // Read as the trades read them, so a trade's day is found by its text.
        dates << TextFile::decodeDate(bar.date);
        keys << double(keys.size()) * kChartDay;
        bar.date = {};
    }
}

int ChartSeries::indexOf(const QString &date, int from) const { return int(dates.indexOf(date, from)); }

int ChartSeries::indexAt(double key) const
{
    const double index = std::round(key / kChartDay);
    return index >= 0 && index < size() ? int(index) : -1;
}

const std::vector<double> &ChartSeries::line(const QString &term)
{
    const auto known = m_lines.find(term);
    if (known != m_lines.end())
        return known->second;
    return m_lines.emplace(term, termLine(term, bars, m_cache)).first->second;
}
