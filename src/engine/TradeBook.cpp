#include "TradeBook.h"

#include "TradeDate.h"

#include <algorithm>

std::vector<TradeRecord> TradeBook::rows() const
{
    std::vector<TradeRecord> all;
    for (const auto &[date, records] : m_entries)
        all.insert(all.end(), records.begin(), records.end());
    return all;
}

void TradeBook::applyDayLimit(int maxCount, BuyOrder buyOrder)
{
    const bool descending = buyOrder == BuyOrder::Descending;
    const qsizetype keep = std::max(maxCount, 0);
    for (auto &[date, records] : m_entries) {
        if (records.size() <= keep)
            continue;
        std::stable_sort(records.begin(), records.end(),
                         [descending](const TradeRecord &a, const TradeRecord &b) {
                             return descending ? a.volumeKey > b.volumeKey : a.volumeKey < b.volumeKey;
                         });
        records.resize(keep);
    }
}

DayLimitedFiling::DayLimitedFiling(int maxCount, BuyOrder buyOrder)
    : m_keep(std::max(maxCount, 0)), m_descending(buyOrder == BuyOrder::Descending)
{
}

DayLimitedFiling::Day &DayLimitedFiling::dayOf(int buyDate)
{
    if (buyDate < 0 || buyDate >= TradeDate::kSlots)
        return m_otherDays[buyDate];
    if (m_slots.empty())
        m_slots.assign(TradeDate::kSlots, -1);
    int &index = m_slots[size_t(buyDate)];
    if (index < 0) {
        index = int(m_dated.size());
        m_dated.emplace_back(buyDate, Day());
    }
    return m_dated[size_t(index)].second;
}

void DayLimitedFiling::file(TradeRecord &&record)
{
    Day &day = dayOf(record.buyDate);
    QList<TradeRecord> &records = day.records;
    const auto ordered = [this](const TradeRecord &a, const TradeRecord &b) { return before(a, b); };
    if (!day.overflowed) {
        records.append(std::move(record));
        if (records.size() > m_keep) {
            std::stable_sort(records.begin(), records.end(), ordered);
            records.resize(m_keep);
            day.overflowed = true;
        }
        return;
    }
    // Equal volumes go behind the ones filed earlier, as the stable sort puts them.
    if (records.size() == m_keep && (m_keep == 0 || !before(record, records.last())))
        return;
    records.insert(std::upper_bound(records.begin(), records.end(), record, ordered), std::move(record));
    if (records.size() > m_keep)
        records.removeLast();
}

TradeBook DayLimitedFiling::finish()
{
    TradeBook book;
    for (auto &[date, day] : m_dated) {
        if (!day.records.isEmpty())
            book.fileDay(TradeDate::text(date), std::move(day.records));
    }
    for (auto it = m_otherDays.begin(); it != m_otherDays.end(); ++it) {
        if (!it->records.isEmpty())
            book.fileDay(TradeDate::text(it.key()), std::move(it->records));
    }
    m_dated.clear();
    m_otherDays.clear();
    m_slots.clear();
    return book;
}
