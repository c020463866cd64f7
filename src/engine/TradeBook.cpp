#include "TradeBook.h"

#include <algorithm>

std::vector<TradeRecord> TradeBook::rows() const
{
    std::vector<TradeRecord> all;
    for (const auto &[date, records] : m_entries)
        all.insert(all.end(), records.begin(), records.end());
    return all;
}

void TradeBook::applyDayLimit(int maxCount, const QString &buyOrder)
{
    const bool descending = buyOrder == QLatin1String("desc");
    const qsizetype keep = std::max(maxCount, 0);
    for (auto &[date, records] : m_entries) {
        if (records.size() <= keep)
            continue;
        std::stable_sort(records.begin(), records.end(), [descending](const TradeRecord &a, const TradeRecord &b) {
            return descending ? a.volumeKey > b.volumeKey : a.volumeKey < b.volumeKey;
        });
        records.resize(keep);
    }
}
