#pragma once

#include "TradeDate.h"
#include "TradeRecord.h"
#include "script/StrategyConfig.h"

#include <QHash>
#include <QList>

#include <map>
#include <vector>

// Trades by buy-date text, in plain text order of the date; each date's list
// in the order the trades were filed.
class TradeBook {
public:
    using Entries = std::map<QString, QList<TradeRecord>>;

    void file(const TradeRecord &record) { m_entries[TradeDate::text(record.buyDate)].append(record); }
    void fileDay(const QString &buyDate, QList<TradeRecord> records)
    {
        m_entries[buyDate] = std::move(records);
    }
    void clear() { m_entries.clear(); }
    bool isEmpty() const { return m_entries.empty(); }
    const Entries &entries() const { return m_entries; }
    qsizetype size() const
    {
        qsizetype count = 0;
        for (const auto &[date, records] : m_entries)
            count += records.size();
        return count;
    }

    // Every record in date order, then filing order.
    std::vector<TradeRecord> rows() const;

    // Keeps at most `maxCount` trades per buy date, the largest volumes first
    // for a descending order and the smallest otherwise; among equal volumes
    // the earlier filed trade wins. Runs once, after the whole simulation:
    // dropped trades still kept their stock busy while they were held.
    void applyDayLimit(int maxCount, BuyOrder buyOrder);

private:
    Entries m_entries;
};

// Files trades in file order and keeps at most `maxCount` per buy date as it
// goes, with the very result applyDayLimit gives after the run; a whole
// market's trades are never held at once.
class DayLimitedFiling {
public:
    DayLimitedFiling(int maxCount, BuyOrder buyOrder);
    void file(TradeRecord &&record);
    TradeBook finish();

private:
    struct Day {
        QList<TradeRecord> records;
        bool overflowed = false; // once more than maxCount came, the list is in volume order
    };
    bool before(const TradeRecord &a, const TradeRecord &b) const
    {
        return m_descending ? a.volumeKey > b.volumeKey : a.volumeKey < b.volumeKey;
    }

    Day &dayOf(int buyDate);

    qsizetype m_keep;
    bool m_descending;
    std::vector<int> m_slots; // TradeDate slot -> index in m_dated, or -1
    std::vector<std::pair<int, Day>> m_dated;
    QHash<int, Day> m_otherDays; // dates of other forms, pending buys among them
};
