// Binding and evaluating a script that reads every kind of term grows
// linearly with the number of bars: each term computes its values once per
// stock and a day's test is only lookups (a pattern reads its last bars).
#include "SampleMarket.h"
#include "market/KLineParser.h"
#include "script/Script.h"

#include <benchmark/benchmark.h>

namespace {

const QString kEveryTerm = QStringLiteral(
    "buy.close,0>ma,20,0\nbuy.ema,12,0>ema,26,0|macd.bar,0>value,0\nbuy.vol,0>volma,5,-1\n"
    "buy.kdj.j,0<value,80|boll.lower,0<close,0\nbuy.dmi.pdi,14,6,0>dmi.mdi,14,6,0|dmi.adx,14,6,0>value,20\n"
    "buy.k.红三兵,0|increase,1,0>swing,0\nsale.close,0<ma,10,0\nsale.boll.upper,0<high,0\n"
    "sale.macd.diff,0<macd.dea,0|dmi.adxr,14,6,0>value,50\nsale.k.乌云盖顶,-1|kdj.k,0>kdj.d,-1");

void bindAndEvaluate(benchmark::State &state)
{
    const int bars = int(state.range(0));
    const auto calendar = SampleMarket::tradingDays(QDate(1995, 1, 3), bars);
    StockSeries series;
    parseKLineText(SampleMarket::stockText("600000", calendar, SampleMarket::kDefaultSeed), series);
    Script script;
    StrategyConfig config;
    int line = 0;
    compileScript(script, config, kEveryTerm, line);
    IndicatorCache cache;
    int fired = 0;
    for (auto _ : state) {
        script.bind(series.view(), cache);
        for (int day = 5; day < series.size(); ++day)
            fired += script.isBuy(day) + script.isSale(day);
    }
    benchmark::DoNotOptimize(fired);
    state.SetComplexityN(series.size());
    state.counters["bars/s"] =
        benchmark::Counter(double(series.size()) * double(state.iterations()), benchmark::Counter::kIsRate);
}

} // namespace

BENCHMARK(bindAndEvaluate)->RangeMultiplier(2)->Range(625, 10000)->Complexity(benchmark::oN);
BENCHMARK_MAIN();
