// Any bytes as a data file: parsing and checking it must neither crash nor
// read outside the text.
#include "market/KLineCheck.h"
#include "market/KLineParser.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string text(reinterpret_cast<const char *>(data), size);
    StockSeries series;
    parseKLineText(text, series);
    // Dates point into the series' own text.
    const char *begin = series.text().data();
    const char *end = begin + series.text().size();
    for (const Stock &bar : series.bars) {
        if (bar.date.size() > 0 && (bar.date.data() < begin || bar.date.data() + bar.date.size() > end))
            std::abort();
    }
    series.text().assign(text.begin(), text.end());
    checkKLineText(series);
    return 0;
}
