// A strategy that trades a lot (short holds, many signals, a high per-day
// limit) on the real A-share history beside the project, the whole way a
// command-line run goes: walk, merge, limit, summary and output file. Each
// round also walks the same data with a script that never trades, so the
// cost of the trades shows as a ratio taken on the same machine at the same
// moment, however busy it is.
#include "engine/BacktestRun.h"
#include "engine/OutputCsv.h"
#include "engine/RunSummary.h"
#include "market/TextFile.h"

#include <benchmark/benchmark.h>

#include <QDir>
#include <QTemporaryDir>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <sys/resource.h>

namespace {

const QString kData = QStringLiteral(ORVEL_SHARED_DIR "/data/a-share-daily");
const QString kQuiet = QStringLiteral("buy.close,0>value,100000");

struct Walk {
    double seconds = 0;
    long long bars = 0;
    qsizetype trades = 0;
};

Walk walk(const QString &scriptText, const QString &outPath)
{
    const auto start = std::chrono::steady_clock::now();
    BacktestRun run(QString(), scriptText, kData);
    std::atomic<long long> bars{0};
    run.setObserver([&bars](int, const StockSeries &series) { bars += series.size(); });
    const TradeBook book = run.run();
    writeOutputCsv(outPath, book, TextEncoding::Gbk);
    const RunSummary summary = RunSummary::fromBook(book);
    benchmark::DoNotOptimize(summary.text());
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    return {took.count(), bars.load(), summary.rows};
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void tradeHeavy(benchmark::State &state)
{
    if (!QDir(kData).exists()) {
        state.SkipWithError("no market data beside the project");
        return;
    }
    const QString script = readTextFile(QStringLiteral(ORVEL_SOURCE_DIR "/bench/trade-heavy.script"));
    QTemporaryDir dir;
    const QString out = dir.filePath(QStringLiteral("output.csv"));
    std::vector<double> heavyTimes;
    std::vector<double> quietTimes;
    Walk heavy;
    walk(kQuiet, out); // the files into the page cache
    for (auto _ : state) {
        quietTimes.push_back(walk(kQuiet, out).seconds);
        heavy = walk(script, out);
        heavyTimes.push_back(heavy.seconds);
        state.SetIterationTime(heavy.seconds);
    }
    const double heavyMedian = median(heavyTimes);
    state.counters["bars/s"] = double(heavy.bars) / heavyMedian;
    state.counters["trades/s"] = double(heavy.trades) / heavyMedian;
    state.counters["trades"] = double(heavy.trades);
    state.counters["quiet_ms"] = median(quietTimes) * 1000;
    state.counters["x_quiet"] = heavyMedian / median(quietTimes);
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    state.counters["peakMB"] = double(usage.ru_maxrss) / 1024;
}

} // namespace

BENCHMARK(tradeHeavy)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(9);
BENCHMARK_MAIN();
