#pragma once

#include "TradeRecord.h"

#include <QList>

#include <map>
#include <vector>

// Trades by buy-date text, in plain text order of the date; each date's list
// in the order the trades were filed.
class TradeBook {
public:
    using Entries = std::map<QString, QList<TradeRecord>>;

    void file(const TradeRecord &record) { m_entries[record.buyDate].append(record); }
    void clear() { m_entries.clear(); }
    bool isEmpty() const { return m_entries.empty(); }
    const Entries &entries() const { return m_entries; }

    // Every record in date order, then filing order.
    std::vector<TradeRecord> rows() const;

    // Keeps at most `maxCount` trades per buy date, the largest volumes first
    // when `buyOrder` is "desc" and the smallest otherwise; among equal volumes
    // the earlier filed trade wins. Runs once, after the whole simulation:
    // dropped trades still kept their stock busy while they were held.
    void applyDayLimit(int maxCount, const QString &buyOrder);

private:
    Entries m_entries;
};
