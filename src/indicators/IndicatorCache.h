#pragma once

#include "StockIndicator.h"

#include <QString>

#include <functional>
#include <memory>
#include <vector>

// The results of each distinct indicator over the stock being bound, so that
// terms reading different lines of one indicator ("dmi.pdi", "dmi.adx" …) or
// the same one twice compute it once. A script makes its cache current while
// it binds; terms bound on their own compute for themselves.
class IndicatorCache {
public:
    using Results = std::vector<IndicatorValue>;
    using Factory = std::function<std::unique_ptr<StockIndicator>()>;

    // The results of the indicator named `key` over `bars`, computed on
    // first use since the last clear(). An indicator that `make` cannot
    // make (a period below one) has no value on any bar.
    const Results &results(const QString &key, StockBars bars, const Factory &make);
    void clear();

    // The cache of the script binding on this thread, or nullptr.
    static IndicatorCache *current();

    class Scope {
    public:
        explicit Scope(IndicatorCache &cache);
        ~Scope();
        Scope(const Scope &) = delete;
        Scope &operator=(const Scope &) = delete;

    private:
        IndicatorCache *m_previous;
    };

private:
    struct Entry {
        QString key;
        std::unique_ptr<StockIndicator> indicator;
        bool filled = false;
        Results results;
    };
    std::vector<Entry> m_entries; // few per script; kept with their buffers from stock to stock
};
