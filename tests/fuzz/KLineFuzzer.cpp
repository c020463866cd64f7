// Any bytes as a data file: parsing must neither crash nor read outside the
// text, and must give what the text without its quotes gives.
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
    for (const Stock &bar : series.bars) {
        if (bar.date.size() > text.size())
            std::abort();
    }
    return 0;
}
