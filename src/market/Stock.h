#pragma once

#include "ByteBuffer.h"

#include <QString>

#include <span>
#include <string_view>
#include <vector>

// One trading day of one stock. Prices and volume stay in single precision as
// the data files are read; the date is the file's own text, never converted.
struct Stock {
    std::string_view date; // points into the owning StockSeries' text
    float open = 0;
    float high = 0;
    float low = 0;
    float close = 0;
    float volume = 0;
    float change = 0;
    float increase = 0;
};

using StockBars = std::span<const Stock>;

// Appends a day with its change against the previous close, which starts at
// -1 for a series' first day: that day's change and increase are meaningless,
// and no rule reads them.
inline void appendDay(std::vector<Stock> &bars, Stock bar, float &previousClose)
{
    bar.change = bar.close - previousClose;
    bar.increase = bar.change * 100 / previousClose;
    previousClose = bar.close;
    bars.push_back(bar);
}

// A stock's day series, oldest first. It owns the text its dates point into,
// and keeps its buffers between loads so that walking a whole market does not
// allocate once the largest file has been seen.
class StockSeries {
public:
    StockSeries() = default;
    StockSeries(const StockSeries &) = delete;
    StockSeries &operator=(const StockSeries &) = delete;
    StockSeries(StockSeries &&) = default;
    StockSeries &operator=(StockSeries &&) = default;

    QString code;
    std::vector<Stock> bars;

    StockBars view() const { return bars; }
    int size() const { return int(bars.size()); }
    void clear()
    {
        code.clear();
        bars.clear();
    }

    // The K-line text the bars were parsed from, which the parser rewrites in
    // place and the dates point into. A file is read straight into it, so no
    // second copy of a large file is ever held.
    ByteBuffer &text() { return m_text; }

private:
    ByteBuffer m_text;
};
