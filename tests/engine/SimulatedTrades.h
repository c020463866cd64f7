#pragma once

#include "TestSupport.h"
#include "engine/OutputCsv.h"
#include "engine/StockSimulator.h"
#include "indicators/IndicatorCache.h"

#include <gtest/gtest.h>

#include <vector>

// A buy signal for the next day's open, and a quiet day to end a series on.
inline const Day kSignal{"s", 10, 10, 10, 10, 100};
inline const Day kQuietEnd{"e", 10, 10, 10, 10, 1};

// The trades, as "output.csv" lines, of `rules` over five quiet warm-up days
// followed by `days`. A day with volume 100 or more signals a buy, one with
// volume above 6 a sale. What the real-account rules changed goes to `effects`.
inline QString simulate(const QString &rules, std::initializer_list<Day> days, const char *code = "600000",
                        RuleEffects *effects = nullptr)
{
    std::vector<Day> all(5, Day{"w", 10, 10, 10, 10, 1});
    all.insert(all.end(), days.begin(), days.end());
    const StockSeries series = seriesOf(all, code);

    StrategyConfig config;
    config.salePoint = SalePoint::Close;
    Script script;
    int line = 0;
    const QString signalRules = QStringLiteral("buy.vol,0>value,99\nsale.vol,0>value,6");
    EXPECT_EQ(compileScript(script, config, rules + signalRules, line), 1) << line;
    IndicatorCache cache;
    script.bind(series.view(), cache);
    std::vector<TradeRecord> trades;
    StockSimulator simulator(config);
    simulator.simulateStock(series, script, trades);
    if (effects)
        *effects = simulator.ruleEffects();
    TradeBook book;
    for (const TradeRecord &t : trades)
        book.file(t, QString::fromLatin1(code));
    return outputCsvText(book);
}
