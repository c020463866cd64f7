#include "StockSummary.h"

#include "TextFile.h"

std::optional<StockSummary> summarizeStock(const QString &listedPath, const KLineSource &source,
                                           StockLoader &loader, StockSeries &series)
{
    loader.load(listedPath, source, series);
    if (series.bars.empty())
        return std::nullopt;
    const Stock &last = series.bars.back();
    return StockSummary{series.code, listedPath,    TextFile::decodeDate(last.date),
                        last.close,  last.increase, series.size()};
}
