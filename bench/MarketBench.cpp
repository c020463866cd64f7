// Whole-market backtest speed: 5,000 generated stocks x 4,000 days, walked
// with the default script and with a script that reads every indicator, on
// all cores. Compare with `cat` reading the same files from the page cache.
// The market is generated once into ORVEL_BENCH_MARKET (default: a folder
// beside the build) and reused by later runs.
#include "BenchMarket.h"
#include "engine/BacktestRun.h"
#include "market/TextFile.h"
#include "script/Script.h"

#include <benchmark/benchmark.h>

#include <sys/resource.h>

namespace {

using namespace BenchMarket;

const QString kAllIndicators = QStringLiteral(
    "buy.close,0>ma,20,0\nbuy.ema,12,0>ema,26,0|macd.bar,0>value,0\nbuy.vol,0>volma,5,-1\n"
    "buy.kdj.j,0<value,80|boll.lower,0<close,0\nbuy.dmi.pdi,14,6,0>dmi.mdi,14,6,0|dmi.adx,14,6,0>value,20\n"
    "buy.k.红三兵,0|increase,0>value,0\nsale.close,0<ma,10,0\nsale.boll.upper,0<high,0\n"
    "sale.macd.diff,0<macd.dea,0|dmi.adxr,14,6,0>value,50\nsale.k.乌云盖顶,0|kdj.k,0>value,90");

double peakMegabytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_maxrss) / 1024;
}

void backtest(benchmark::State &state, const QString &scriptText)
{
    // The settings are the built-in defaults and the script's own lines.
    BacktestRun run(QString(), scriptText, marketDir());
    size_t trades = 0;
    for (auto _ : state)
        trades = run.run().rows().size();
    state.counters["bars/s"] =
        benchmark::Counter(double(kStocks) * kDays * double(state.iterations()), benchmark::Counter::kIsRate);
    state.counters["trades"] = double(trades);
    state.counters["peakMB"] = peakMegabytes();
}

void defaultScript(benchmark::State &state)
{
    backtest(state, readTextFile(QStringLiteral(ORVEL_SOURCE_DIR "/src/resources/default.script")));
}

void everyIndicator(benchmark::State &state) { backtest(state, kAllIndicators); }

// What the operating system alone needs to hand over the files.
void catFiles(benchmark::State &state)
{
    const std::string command = catCommand(marketDir());
    for (auto _ : state) {
        if (std::system(command.c_str()) != 0)
            state.SkipWithError("cat failed");
    }
}

} // namespace

BENCHMARK(catFiles)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
BENCHMARK(defaultScript)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
BENCHMARK(everyIndicator)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
BENCHMARK_MAIN();
