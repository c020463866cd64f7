// Any bytes as a script: compiling must never crash, and a compiled script
// must bind to a short series and answer for every day without crashing,
// the same whether asked day by day or for all days at once.
#include "market/KLineParser.h"
#include "market/TextFile.h"
#include "script/Script.h"

#include <QByteArray>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = TextFile::decode(QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)));
    Script script;
    StrategyConfig config;
    int line = 0;
    if (compileScript(script, config, text, line) != 1)
        return 0;
    // The same days for every input, parsed once: the script is what varies.
    static const StockSeries series = [] {
        StockSeries parsed;
        parseKLineText("[[a,1,2,3,0.5,10],[b,2,1,3,1,0],[c,0,0,0,0,0],[d,5,6,7,4,100],[e,6,5,7,5,9],"
                       "[f,5,5,5,5,5],[g,4,8,9,3,1],[h,8,8.8,8.8,8,2]]",
                       parsed);
        return parsed;
    }();
    IndicatorCache cache;
    script.bind(series.view(), cache);
    constexpr int kFirst = -2;
    const int last = series.size() + 2;
    unsigned char buy[16], sale[16];
    DayColumns columns;
    script.buyDays(kFirst, last, buy, columns);
    script.saleDays(kFirst, last, sale, columns);
    for (int day = kFirst; day < last; ++day) {
        if (script.isBuy(day) != bool(buy[day - kFirst]) || script.isSale(day) != bool(sale[day - kFirst]))
            std::abort();
    }
    return 0;
}
