// The report after a trade-heavy run on a whole market: 150,000 trades over
// 20 years of 5,000 stocks. Keeping the closes happens while the run walks
// the stocks (on its worker threads); building the report happens once after.
#include "SampleMarket.h"
#include "report/StrategyReport.h"

#include <benchmark/benchmark.h>

#include <random>

namespace {

constexpr int kStocks = 5000;
constexpr int kTrades = 150000;
const QDate kFirstDay(2004, 1, 5);

struct SyntheticRun {
    std::vector<std::string> dates;
    std::vector<std::vector<Stock>> stocks;
    std::vector<ReportTrade> trades;
    ReportMarket market;
};

// Random walks on every weekday for 20 years; some stocks list late. Trades
// bought at a day's close, held 1 to 10 days, in buy-date order.
const SyntheticRun &syntheticRun()
{
    static SyntheticRun run = [] {
        SyntheticRun r;
        r.dates = SampleMarket::tradingDays(kFirstDay, 5218);
        std::mt19937 random(7);
        std::normal_distribution<float> move(0.0f, 0.02f);
        for (int s = 0; s < kStocks; ++s) {
            std::vector<Stock> bars;
            float close = 10;
            for (size_t day = random() % 4 == 0 ? random() % 2000 : 0; day < r.dates.size(); ++day) {
                close *= 1 + move(random);
                Stock bar;
                bar.date = r.dates[day];
                bar.close = close;
                bars.push_back(bar);
            }
            r.stocks.push_back(std::move(bars));
        }
        struct Planned {
            int stock, buy, sale;
        };
        std::vector<Planned> planned;
        for (int t = 0; t < kTrades; ++t) {
            const int stock = int(random() % kStocks);
            const int size = int(r.stocks[size_t(stock)].size());
            const int buy = int(random() % unsigned(size - 11));
            planned.push_back({stock, buy, buy + 1 + int(random() % 10)});
        }
        const auto dateOf = [&r](const Planned &p, int bar) {
            return r.stocks[size_t(p.stock)][size_t(bar)].date;
        };
        std::stable_sort(planned.begin(), planned.end(), [&](const Planned &a, const Planned &b) {
            return dateOf(a, a.buy) < dateOf(b, b.buy);
        });
        for (const Planned &p : planned) {
            const auto &bars = r.stocks[size_t(p.stock)];
            r.trades.push_back({QString::number(600000 + p.stock), QString::fromLatin1(dateOf(p, p.buy)),
                                bars[size_t(p.buy)].close, QString::fromLatin1(dateOf(p, p.sale)),
                                bars[size_t(p.sale)].close, p.sale - p.buy + 1, TradeExit(p.sale % 4), true,
                                true});
        }
        for (int s = 0; s < kStocks; ++s)
            r.market.addStock(s, QString::number(600000 + s), r.stocks[size_t(s)]);
        return r;
    }();
    return run;
}

void keepCloses(benchmark::State &state)
{
    const SyntheticRun &run = syntheticRun();
    for (auto _ : state) {
        ReportMarket market;
        for (int s = 0; s < kStocks; ++s)
            market.addStock(s, QString::number(600000 + s), run.stocks[size_t(s)]);
        benchmark::DoNotOptimize(market);
    }
}

void buildReport(benchmark::State &state)
{
    const SyntheticRun &run = syntheticRun();
    for (auto _ : state) {
        const StrategyReport report = computeReport(run.trades, run.market, ReportSettings());
        benchmark::DoNotOptimize(report.account.finalEquity);
    }
    state.counters["trades"] = double(run.trades.size());
}

} // namespace

BENCHMARK(keepCloses)->Unit(benchmark::kMillisecond);
BENCHMARK(buildReport)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
