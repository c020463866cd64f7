// A sweep against one backtest on the generated whole market: the default
// script with 10 holding times x 10 take-profit levels (100 combinations)
// beside the same script run once, both on all cores and both giving their
// summary and account figures. Each round of the pair runs one after the
// other, so a busy machine slows both alike.
#include "BenchMarket.h"
#include "engine/BacktestRun.h"
#include "market/TextFile.h"
#include "report/ReportTrade.h"
#include "sweep/SweepRun.h"

#include <benchmark/benchmark.h>

#include <sys/resource.h>

namespace {

QString defaultScript()
{
    return readTextFile(QStringLiteral(ORVEL_SOURCE_DIR "/src/resources/default.script"));
}

double peakMegabytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_maxrss) / 1024;
}

// One backtest as `orvel-cli backtest --report` computes it, without writing files.
void oneBacktest(benchmark::State &state)
{
    const QString dir = BenchMarket::marketDir();
    for (auto _ : state) {
        BacktestRun run(QString(), defaultScript(), dir);
        ReportMarket market;
        run.setObserver([&market](int fileIndex, const StockSeries &series) {
            market.addStock(fileIndex, series.code, series.view());
        });
        const TradeBook book = run.run();
        benchmark::DoNotOptimize(RunSummary::fromBook(book));
        benchmark::DoNotOptimize(computeReport(reportTradesOf(book), market, run.config().report).account);
    }
    state.counters["peakMB"] = peakMegabytes();
}

void sweep100(benchmark::State &state)
{
    const QString dir = BenchMarket::marketDir();
    QString script = defaultScript();
    script.replace(QStringLiteral("config.trade.max.hold.day,3"),
                   QStringLiteral("config.trade.max.hold.day,$hold"));
    script.replace(QStringLiteral("config.trade.max.profit,64.0"),
                   QStringLiteral("config.trade.max.profit,$profit"));
    SweepGrid grid;
    grid.addAxis(QStringLiteral("hold=1:10"));
    grid.addAxis(QStringLiteral("profit=5:50:5"));
    for (auto _ : state) {
        SweepRun sweep(QString(), script, dir, grid);
        sweep.setJobs(BacktestRun::defaultJobs());
        const std::vector<SweepResult> results = sweep.run(0, grid.size());
        if (results.size() != 100)
            state.SkipWithError(qPrintable(sweep.problemText()));
    }
    state.counters["peakMB"] = peakMegabytes();
}

} // namespace

// CPU time of the whole process (every worker), beside the wall time.
BENCHMARK(oneBacktest)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->MeasureProcessCPUTime()
    ->Iterations(1)
    ->Repetitions(3);
BENCHMARK(sweep100)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->MeasureProcessCPUTime()
    ->Iterations(1)
    ->Repetitions(3);
BENCHMARK_MAIN();
