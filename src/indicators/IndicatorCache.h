#pragma once

#include "StockIndicator.h"

#include <QString>

#include <functional>
#include <memory>
#include <vector>

// The results of each distinct indicator over the stock being bound, so that
// terms reading different lines of one indicator ("dmi.pdi", "dmi.adx" …) or
// the same one twice compute it once. Each worker owns one and hands it to
// every term it binds; clear() it before the next stock.
class IndicatorCache {
public:
    using Results = std::vector<IndicatorValue>;
    using Factory = std::function<std::unique_ptr<StockIndicator>()>;

    // The results of the indicator named `key` over `bars`, computed on
    // first use since the last clear(). An indicator that `make` cannot
    // make (a period below one) has no value on any bar.
    const Results &results(const QString &key, StockBars bars, const Factory &make);
    void clear();

private:
    struct Entry {
        QString key;
        std::unique_ptr<StockIndicator> indicator;
        bool filled = false;
        Results results;
    };
    std::vector<Entry> m_entries; // few per script; kept with their buffers from stock to stock
};
