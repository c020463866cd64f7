#pragma once

#include "TradeDate.h"
#include "TradeRecord.h"
#include "script/StrategyConfig.h"

#include <QStringList>

#include <unordered_map>
#include <vector>

// A run's trades by buy-date text, in plain text order of the date; each
// date's trades in the order they were filed. The records stay where they
// were first stored, in blocks that never move; the book orders numbers
// naming them, so a whole market's trades are never copied to be ordered.
class TradeBook {
public:
    qsizetype size() const { return qsizetype(m_order.size()); }
    bool isEmpty() const { return m_order.empty(); }
    // The trade at `row` of the book's order.
    const TradeRecord &operator[](qsizetype row) const { return record(m_order[size_t(row)]); }

    // Every trade in book order, with its code.
    std::vector<TradeRow> rows() const;

    // The code of the stock a record of this book belongs to.
    const QString &code(const TradeRecord &record) const
    {
        return record.stock >= 0 && record.stock < m_codes.size() ? m_codes[record.stock] : m_noCode;
    }
    // The codes of the stocks, by the records' `stock`.
    void setCodes(const QStringList &codes) { m_codes = codes; }

    // Adds one trade of stock `code` behind the others of its date, for books
    // put together a trade at a time; a run's trades come through DayLimitedFiling.
    void file(const TradeRecord &record, const QString &code);
    void file(const TradeRow &row) { file(row, row.code); }

    // Keeps at most `maxCount` trades per buy date, the largest volumes first
    // for a descending order and the smallest otherwise; among equal volumes
    // the earlier filed trade wins. Runs once, after the whole simulation:
    // dropped trades still kept their stock busy while they were held.
    void applyDayLimit(int maxCount, BuyOrder buyOrder);

private:
    friend class DayLimitedFiling;
    using Block = std::vector<TradeRecord>;
    static constexpr int kBlockBits = 12; // a block holds at most 4,096 records
    static quint32 idOf(size_t block, size_t offset) { return quint32(block << kBlockBits | offset); }
    // Stores `record` in the last block, or a new one when that is full.
    static void store(std::vector<Block> &blocks, TradeRecord &&record);
    const TradeRecord &record(quint32 id) const
    {
        return m_blocks[id >> kBlockBits][id & ((1u << kBlockBits) - 1)];
    }

    struct Day {
        QString date;
        size_t end = 0; // one past the day's last trade in m_order
    };

    std::vector<Block> m_blocks;
    std::vector<quint32> m_order; // the records' ids, in book order
    std::vector<Day> m_days; // in text order of the date
    QStringList m_codes;
    QString m_noCode;
};

// Files trades and keeps at most `maxCount` per buy date as it goes, with
// the very result applyDayLimit gives after the run; a whole market's trades
// are never held at once. Each worker files its own stocks, in file order,
// into a filing of its own; merging the workers' filings gives what one
// filing of every stock in file order gives.
class DayLimitedFiling {
public:
    DayLimitedFiling(int maxCount, BuyOrder buyOrder);
    // A stock's trades come together, in the order they were made, and
    // `record.stock` never goes below the stocks filed before.
    void file(TradeRecord &&record);
    TradeBook finish();
    // Filings of disjoint stocks with the same limit, consumed.
    static TradeBook merge(std::vector<DayLimitedFiling> parts);

private:
    struct Day {
        int date = TradeDate::kNone;
        qsizetype seen = 0; // every trade of the day, kept or not
        qsizetype filed = 0; // in m_blocks: the day's first trades, up to m_filedFirst
        std::vector<TradeRecord> later; // the best of the day's other trades, in volume order
    };
    bool before(const TradeRecord &a, const TradeRecord &b) const
    {
        return m_descending ? a.volumeKey > b.volumeKey : a.volumeKey < b.volumeKey;
    }
    Day &dayOf(int buyDate);

    // The steps of a merge.
    class MergedDays;
    struct Cursor;
    static std::vector<Cursor> adopt(std::vector<DayLimitedFiling> &parts, TradeBook &book, MergedDays &merged);
    static void takeFirstTrades(std::vector<Cursor> &cursors, const TradeBook &book, MergedDays &merged);
    static void takeLaterTrades(std::vector<DayLimitedFiling> &parts, TradeBook &book, MergedDays &merged);
    void limitAndOrder(TradeBook &book, MergedDays &merged) const;

    qsizetype m_keep;
    // A small limit keeps only each day's best: the days of a sweep's many
    // filings stay small. A large one rarely cuts, so the first trades go
    // straight into blocks and no day's list grows.
    qsizetype m_filedFirst;
    bool m_descending;
    // The days' first trades in filing order, each stored once, in blocks
    // that grow without moving what they hold.
    std::vector<TradeBook::Block> m_blocks;
    std::vector<Day> m_days;
    std::vector<int> m_slots; // TradeDate slot -> index in m_days, or -1
    std::unordered_map<int, int> m_otherDays; // dates of other forms, pending buys among them
};
