#include "TradeBook.h"

#include "TradeDate.h"
#include "market/Prefault.h"

#include <algorithm>

void TradeBook::store(std::vector<Block> &blocks, TradeRecord &&record)
{
    constexpr size_t kFullBlock = size_t(1) << kBlockBits;
    if (blocks.empty() || blocks.back().size() == blocks.back().capacity() ||
        blocks.back().size() == kFullBlock) {
        // Small books stay small; a whole market's fill blocks of 4,096.
        const size_t capacity = std::min(kFullBlock, size_t(256) << std::min(blocks.size(), size_t(4)));
        blocks.emplace_back().reserve(capacity);
        prefaultPages(blocks.back().data(), capacity * sizeof(TradeRecord));
    }
    blocks.back().push_back(std::move(record));
}

std::vector<TradeRow> TradeBook::rows() const
{
    std::vector<TradeRow> all;
    all.reserve(m_order.size());
    for (const quint32 id : m_order)
        all.push_back({record(id), code(record(id))});
    return all;
}

void TradeBook::file(const TradeRecord &record, const QString &code)
{
    TradeRecord stored = record;
    stored.stock = int(m_codes.indexOf(code));
    if (stored.stock < 0) {
        stored.stock = int(m_codes.size());
        m_codes.append(code);
    }
    store(m_blocks, std::move(stored));
    const quint32 id = idOf(m_blocks.size() - 1, m_blocks.back().size() - 1);
    const QString date = TradeDate::text(record.buyDate);
    auto day = std::lower_bound(m_days.begin(), m_days.end(), date,
                                [](const Day &d, const QString &text) { return d.date < text; });
    if (day == m_days.end() || day->date != date)
        day = m_days.insert(day, Day{date, day == m_days.begin() ? 0 : std::prev(day)->end});
    m_order.insert(m_order.begin() + qsizetype(day->end), id);
    for (; day != m_days.end(); ++day)
        ++day->end;
}

void TradeBook::applyDayLimit(int maxCount, BuyOrder buyOrder)
{
    const bool descending = buyOrder == BuyOrder::Descending;
    const size_t keep = size_t(std::max(maxCount, 0));
    std::vector<quint32> kept;
    std::vector<Day> days;
    size_t start = 0;
    for (const Day &day : m_days) {
        std::vector<quint32> ids(m_order.begin() + qsizetype(start), m_order.begin() + qsizetype(day.end));
        start = day.end;
        if (ids.size() > keep) {
            std::stable_sort(ids.begin(), ids.end(), [this, descending](quint32 a, quint32 b) {
                return descending ? record(a).volumeKey > record(b).volumeKey
                                  : record(a).volumeKey < record(b).volumeKey;
            });
            ids.resize(keep);
        }
        kept.insert(kept.end(), ids.begin(), ids.end());
        if (!ids.empty())
            days.push_back({day.date, kept.size()});
    }
    m_order = std::move(kept);
    m_days = std::move(days);
}

DayLimitedFiling::DayLimitedFiling(int maxCount, BuyOrder buyOrder)
    : m_keep(std::max(maxCount, 0)), m_filedFirst(m_keep > 64 ? m_keep : 0),
      m_descending(buyOrder == BuyOrder::Descending)
{
}

DayLimitedFiling::Day &DayLimitedFiling::dayOf(int buyDate)
{
    int *index = nullptr;
    if (buyDate >= 0 && buyDate < TradeDate::kSlots) {
        // Grown only as far as the latest date seen: a sweep keeps many filings.
        if (size_t(buyDate) >= m_slots.size())
            m_slots.resize(size_t(buyDate) + 1, -1);
        index = &m_slots[size_t(buyDate)];
    } else {
        index = &m_otherDays.try_emplace(buyDate, -1).first->second;
    }
    if (*index < 0) {
        *index = int(m_days.size());
        m_days.push_back({buyDate, 0, 0, {}});
    }
    return m_days[size_t(*index)];
}

void DayLimitedFiling::file(TradeRecord &&record)
{
    Day &day = dayOf(record.buyDate);
    ++day.seen;
    if (day.filed < m_filedFirst) {
        ++day.filed;
        TradeBook::store(m_blocks, std::move(record));
        return;
    }
    // Of the rest only the best can be kept; equal volumes go behind the ones
    // filed earlier, as a stable sort puts them.
    std::vector<TradeRecord> &later = day.later;
    const auto ordered = [this](const TradeRecord &a, const TradeRecord &b) { return before(a, b); };
    if (qsizetype(later.size()) == m_keep) {
        if (m_keep == 0 || !before(record, later.back()))
            return;
        later.pop_back(); // first, so that a small day never grows past its room
    } else if (later.empty() && m_filedFirst == 0) {
        later.reserve(size_t(m_keep)); // a sweep holds a day like this per filing
    }
    later.insert(std::upper_bound(later.begin(), later.end(), record, ordered), std::move(record));
}

TradeBook DayLimitedFiling::finish()
{
    std::vector<DayLimitedFiling> parts;
    parts.push_back(std::move(*this));
    return merge(std::move(parts));
}

// The whole run's days, with the ids of their trades, while the workers'
// filings are merged.
class DayLimitedFiling::MergedDays {
public:
    struct Day {
        int date;
        qsizetype seen = 0; // trades filed, kept or not
        std::vector<quint32> ids;
    };

    Day &operator[](int date)
    {
        int &index = date >= 0 && date < TradeDate::kSlots ? m_slots[size_t(date)]
                                                             : m_other.try_emplace(date, -1).first->second;
        if (index < 0) {
            index = int(days.size());
            days.push_back({date, 0, {}});
        }
        return days[size_t(index)];
    }

    std::vector<Day> days;

private:
    std::vector<int> m_slots = std::vector<int>(size_t(TradeDate::kSlots), -1);
    std::unordered_map<int, int> m_other;
};

// Where the next trade of one filing stands among the book's blocks.
struct DayLimitedFiling::Cursor {
    size_t block; // the book's
    size_t endBlock;
    size_t offset = 0;
};

TradeBook DayLimitedFiling::merge(std::vector<DayLimitedFiling> parts)
{
    TradeBook book;
    if (parts.empty())
        return book;
    MergedDays merged;
    std::vector<Cursor> cursors = adopt(parts, book, merged);
    takeFirstTrades(cursors, book, merged);
    takeLaterTrades(parts, book, merged);
    parts.front().limitAndOrder(book, merged);
    return book;
}

// The filings' blocks become the book's, and every day gets room for its trades.
std::vector<DayLimitedFiling::Cursor> DayLimitedFiling::adopt(std::vector<DayLimitedFiling> &parts, TradeBook &book,
                                                              MergedDays &merged)
{
    std::vector<Cursor> cursors;
    for (DayLimitedFiling &part : parts) {
        for (const Day &day : part.m_days) {
            MergedDays::Day &all = merged[day.date];
            all.seen += day.seen;
            all.ids.reserve(all.ids.size() + size_t(day.filed) + day.later.size());
        }
        cursors.push_back({book.m_blocks.size(), book.m_blocks.size() + part.m_blocks.size()});
        std::move(part.m_blocks.begin(), part.m_blocks.end(), std::back_inserter(book.m_blocks));
    }
    return cursors;
}

// The days' first trades, a stock at a time in file order.
void DayLimitedFiling::takeFirstTrades(std::vector<Cursor> &cursors, const TradeBook &book, MergedDays &merged)
{
    const auto at = [&book](const Cursor &c) -> const TradeRecord & { return book.m_blocks[c.block][c.offset]; };
    for (;;) {
        Cursor *first = nullptr;
        for (Cursor &cursor : cursors) {
            if (cursor.block < cursor.endBlock && (!first || at(cursor).stock < at(*first).stock))
                first = &cursor;
        }
        if (!first)
            return;
        const int stock = at(*first).stock;
        while (first->block < first->endBlock && at(*first).stock == stock) {
            merged[at(*first).buyDate].ids.push_back(TradeBook::idOf(first->block, first->offset));
            if (++first->offset == book.m_blocks[first->block].size()) {
                ++first->block;
                first->offset = 0;
            }
        }
    }
}

// Then the best of the later ones, back among the others in the order they
// were filed: a stock buys at most once a day, except where its file repeats
// a date, and then its buy bars tell.
void DayLimitedFiling::takeLaterTrades(std::vector<DayLimitedFiling> &parts, TradeBook &book, MergedDays &merged)
{
    const auto filedEarlier = [&book](quint32 a, quint32 b) {
        const TradeRecord &x = book.record(a);
        const TradeRecord &y = book.record(b);
        return x.stock != y.stock ? x.stock < y.stock : x.buyIndex < y.buyIndex;
    };
    for (DayLimitedFiling &part : parts) {
        for (Day &day : part.m_days) {
            if (day.later.empty())
                continue;
            std::vector<quint32> &ids = merged[day.date].ids;
            for (TradeRecord &record : day.later) {
                TradeBook::store(book.m_blocks, std::move(record));
                ids.push_back(TradeBook::idOf(book.m_blocks.size() - 1, book.m_blocks.back().size() - 1));
            }
            std::stable_sort(ids.begin(), ids.end(), filedEarlier);
        }
    }
}

// The limit over all: each filing kept its own best, a superset of the best
// of all. A day that ever had more than the limit lists its trades in volume
// order, as when one filing took every trade. Then the days in text order.
void DayLimitedFiling::limitAndOrder(TradeBook &book, MergedDays &merged) const
{
    const auto ordered = [&book, this](quint32 a, quint32 b) { return before(book.record(a), book.record(b)); };
    std::vector<std::pair<QString, std::vector<quint32> *>> days;
    for (MergedDays::Day &day : merged.days) {
        if (day.seen > m_keep) {
            std::stable_sort(day.ids.begin(), day.ids.end(), ordered);
            day.ids.resize(std::min(day.ids.size(), size_t(m_keep)));
        }
        if (!day.ids.empty())
            days.emplace_back(TradeDate::text(day.date), &day.ids);
    }
    std::sort(days.begin(), days.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
    size_t kept = 0;
    for (const auto &day : days)
        kept += day.second->size();
    book.m_order.reserve(kept);
    prefaultPages(book.m_order.data(), kept * sizeof(quint32));
    book.m_days.reserve(days.size());
    for (auto &[date, ids] : days) {
        book.m_order.insert(book.m_order.end(), ids->begin(), ids->end());
        book.m_days.push_back({date, book.m_order.size()});
    }
}
