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

std::shared_ptr<const IndicatorLine> IndicatorCache::line(const QString &key, const LineFiller &fill)
{
    LineEntry &entry = m_lines[key];
    if (!entry.line)
        entry.line = std::make_shared<IndicatorLine>();
    const std::shared_ptr<IndicatorLine> line = entry.line;
    if (!entry.filled) {
        entry.filled = true;
        fill(*line); // may use results(), never line(): `entry` stays where it is
    }
    return line;
}

void IndicatorCache::clear()
{
    for (Entry &entry : m_entries)
        entry.filled = false;
    for (LineEntry &entry : m_lines)
        entry.filled = false;
}
