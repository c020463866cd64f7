#include "TodayPicks.h"

#include "market/TextFile.h"

#include <algorithm>

TodayPicks::TodayPicks(int fileCount) : m_lasts(size_t(std::max(fileCount, 0))) {}

void TodayPicks::addStock(int fileIndex, const StockSeries &series, bool buySignal)
{
    if (series.bars.empty())
        return;
    const Stock &last = series.bars.back();
    Last &entry = m_lasts[size_t(fileIndex)];
    entry.date = TextFile::decodeDate(last.date);
    if (buySignal)
        entry.pick = StockPick{series.code, entry.date, last.close, last.increase, last.volume, fileIndex};
}

std::vector<StockPick> TodayPicks::picks(BuyOrder order) const
{
    QString latest;
    for (const Last &entry : m_lasts)
        latest = std::max(latest, entry.date);
    std::vector<StockPick> result;
    for (const Last &entry : m_lasts) {
        if (entry.pick && entry.date == latest)
            result.push_back(*entry.pick);
    }
    const bool descending = order == BuyOrder::Descending;
    std::stable_sort(result.begin(), result.end(), [descending](const StockPick &a, const StockPick &b) {
        return descending ? a.volume > b.volume : a.volume < b.volume;
    });
    return result;
}
