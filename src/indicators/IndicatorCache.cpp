#include "IndicatorCache.h"

const IndicatorCache::Results &IndicatorCache::results(const QString &key, StockBars bars,
                                                       const Factory &make)
{
    Entry *entry = nullptr;
    for (Entry &candidate : m_entries) {
        if (candidate.key == key)
            entry = &candidate;
    }
    if (!entry) {
        m_entries.push_back({key, make(), false, {}});
        entry = &m_entries.back();
    }
    if (!entry->filled) {
        entry->results.assign(bars.size(), IndicatorValue());
        if (entry->indicator) {
            entry->indicator->reset();
            for (size_t i = 0; i < bars.size(); ++i)
                entry->results[i] = entry->indicator->next(bars[i]);
        }
        entry->filled = true;
    }
    return entry->results;
}

void IndicatorCache::clear()
{
    for (Entry &entry : m_entries)
        entry.filled = false;
}
