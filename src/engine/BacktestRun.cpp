#include "BacktestRun.h"

#include "StockSimulator.h"
#include "TodayPicks.h"
#include "market/StockLoader.h"

#include <algorithm>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace {

// Hands out files to workers and reports progress in file order as soon as
// every earlier file is done.
class FileQueue {
public:
    FileQueue(const StockFileList &files, const BacktestRun::Progress &progress, size_t variants,
              const std::atomic<bool> &cancelled)
        : files(files), codes(size_t(files.size())), ruleEffects(variants), m_progress(progress),
          m_cancelled(cancelled), m_done(size_t(files.size()), false)
    {
    }

    // The next file to process, or -1 when none is left or the run was cancelled.
    int take()
    {
        if (m_cancelled)
            return -1;
        const int index = m_next.fetch_add(1);
        return index < files.size() ? index : -1;
    }

    void finish(int index)
    {
        const std::lock_guard lock(m_mutex);
        m_done[size_t(index)] = true;
        for (; m_reported < files.size() && m_done[size_t(m_reported)]; ++m_reported) {
            // The share done before this file: the first reports 0, none 100.
            if (m_progress)
                m_progress(int(qint64(m_reported) * 100 / files.size()), files[m_reported]);
        }
    }

    // A worker's filings and counts, once it is done. The first variant's
    // buy signals stand for the run's.
    void addWorker(std::vector<DayLimitedFiling> &&filings, const std::vector<StockSimulator> &simulators,
                   const StockSkipCounts &files)
    {
        const std::lock_guard lock(m_mutex);
        filingsByWorker.push_back(std::move(filings));
        for (size_t variant = 0; variant < simulators.size(); ++variant)
            ruleEffects[variant] += simulators[variant].ruleEffects();
        RunCounts worker = simulators.front().counts();
        worker.files = files;
        counts += worker;
    }

    const StockFileList &files;
    std::vector<QString> codes; // by file, each written by the worker that loads it
    std::vector<RuleEffects> ruleEffects;
    RunCounts counts;
    std::vector<std::vector<DayLimitedFiling>> filingsByWorker; // [worker][variant]

private:
    const BacktestRun::Progress &m_progress;
    const std::atomic<bool> &m_cancelled;
    std::atomic<int> m_next{0};
    std::mutex m_mutex;
    std::vector<bool> m_done;
    int m_reported = 0;
};

// The variants sharing one set of statements, with a worker's own copy of them.
struct SignalGroup {
    Script script;
    std::vector<size_t> variants;
};

std::vector<SignalGroup> signalGroupsOf(const std::vector<BacktestRun::Variant> &variants)
{
    std::vector<SignalGroup> groups;
    std::vector<int> ids;
    for (size_t i = 0; i < variants.size(); ++i) {
        const auto found = std::find(ids.begin(), ids.end(), variants[i].signalGroup);
        if (found != ids.end()) {
            groups[size_t(found - ids.begin())].variants.push_back(i);
            continue;
        }
        ids.push_back(variants[i].signalGroup);
        groups.push_back({variants[i].strategy->script(), {i}});
    }
    return groups;
}

// A series cut down to six days or fewer is skipped, as the loader skips such a file.
constexpr int kFewestDays = 6;

// What a walk does besides simulating every variant.
struct WalkOptions {
    std::string lastDate; // empty: the whole series
    bool simulate = true;
    TodayPicks *picks = nullptr; // the first variant's, when asked for
};

// Drops the days after `lastDate`, so that nothing computed on the series can
// see them. False when too few days remain to walk.
bool cutAfter(StockSeries &series, const std::string &lastDate)
{
    if (lastDate.empty())
        return true;
    const auto later = std::find_if(series.bars.begin(), series.bars.end(),
                                    [&lastDate](const Stock &bar) { return bar.date > lastDate; });
    series.bars.erase(later, series.bars.end());
    return series.size() > kFewestDays;
}

// One worker: its own copies of the statements (they keep per-stock values),
// its own indicator cache and buffers, reused from stock to stock. Each stock
// is read once; each group's conditions are evaluated once for its variants.
void work(const std::vector<BacktestRun::Variant> &variants, const std::vector<StrategyConfig> &settings,
          const BacktestRun::StockObserver &observer, const WalkOptions &options, FileQueue &queue)
{
    std::vector<SignalGroup> groups = signalGroupsOf(variants);
    IndicatorCache indicators;
    StockLoader loader;
    StockSeries series;
    DaySignals conditions;
    std::vector<StockSimulator> simulators(settings.begin(), settings.end());
    // Each worker files its own trades: the files come to it in file order.
    std::vector<DayLimitedFiling> filings;
    for (const StrategyConfig &config : settings)
        filings.emplace_back(config.maxCount, config.buyOrder);
    std::vector<TradeRecord> trades; // one stock's, reused
    const KLineSource source = settings.front().kLineSource();
    StockSkipCounts files;
    for (int index = queue.take(); index >= 0; index = queue.take()) {
        const bool loaded = loader.load(queue.files[index], source, series);
        files.add(loader.lastSkip());
        if (loaded && cutAfter(series, options.lastDate)) {
            queue.codes[size_t(index)] = series.code;
            if (observer)
                observer(index, series);
            for (SignalGroup &group : groups) {
                group.script.bind(series.view(), indicators);
                // Asked while this group's indicators are the cache's.
                if (options.picks && &group == &groups.front())
                    options.picks->addStock(index, series, group.script.isBuy(series.size() - 1));
                if (!options.simulate)
                    continue;
                conditions.evaluate(group.script, series.size());
                for (const size_t variant : group.variants) {
                    trades.clear();
                    simulators[variant].simulateStock(series, conditions, trades);
                    for (TradeRecord &trade : trades) {
                        trade.stock = index;
                        filings[variant].file(std::move(trade));
                    }
                }
            }
        }
        queue.finish(index);
    }
    queue.addWorker(std::move(filings), simulators, files);
}

} // namespace

BacktestRun::BacktestRun(const QString &configText, const QString &scriptText, const QString &dataDir)
{
    StrategyConfig config;
    config.applyLines(configText);
    CompileResult compiled = CompiledStrategy::compile(std::move(config), scriptText, dataDir);
    if (compiled.status != CompileResult::Status::Ok) {
        m_problem = compiled.status == CompileResult::Status::ErrorAtLine ? Problem::CompileError
                                                                          : Problem::NoBuyStatement;
        m_errorLine = compiled.line;
        m_errorReason = compiled.reason;
        return;
    }
    m_strategy = std::move(compiled.strategy);
    m_variants.push_back({m_strategy, 0});
    m_files = m_strategy->config().kLineSource().list();
    if (m_files.isEmpty())
        m_problem = Problem::NoData;
}

BacktestRun::BacktestRun(std::vector<Variant> variants) : m_variants(std::move(variants))
{
    m_strategy = m_variants.front().strategy;
    m_files = m_strategy->config().kLineSource().list();
    if (m_files.isEmpty())
        m_problem = Problem::NoData;
}

QString BacktestRun::problemTitle() const
{
    switch (m_problem) {
    case Problem::None: return {};
    case Problem::CompileError:
    case Problem::NoBuyStatement: return QStringLiteral("预编译出错");
    case Problem::NoData: return QStringLiteral("警告");
    }
    return {};
}

QString BacktestRun::problemText() const
{
    switch (m_problem) {
    case Problem::None: return {};
    case Problem::CompileError: return QStringLiteral("第:%1行有错误").arg(m_errorLine);
    case Problem::NoBuyStatement: return QStringLiteral("脚本缺少买点");
    case Problem::NoData: return QStringLiteral("文件夹%1不存在或其中缺少股票文件").arg(config().kDir);
    }
    return {};
}

int BacktestRun::defaultJobs() { return int(std::max(1u, std::thread::hardware_concurrency())); }

TradeBook BacktestRun::run() { return std::move(runAll().front()); }

std::vector<TradeBook> BacktestRun::runAll() { return walk(true); }

std::vector<StockPick> BacktestRun::screen()
{
    const bool picking = m_picking;
    m_picking = true;
    walk(false);
    m_picking = picking;
    return m_picks;
}

std::vector<TradeBook> BacktestRun::walk(bool simulate)
{
    std::vector<StrategyConfig> settings;
    for (const Variant &variant : m_variants) {
        settings.push_back(variant.strategy->config());
        if (m_rules)
            settings.back().rules = *m_rules;
    }
    std::optional<TodayPicks> picks;
    if (m_picking)
        picks.emplace(int(m_files.size()));
    const WalkOptions options{m_lastDate.toStdString(), simulate, picks ? &*picks : nullptr};
    FileQueue queue(m_files, m_progress, settings.size(), m_cancelled);
    const int workers = std::clamp(m_jobs, 1, std::max(1, int(m_files.size())));
    std::vector<std::thread> threads;
    for (int i = 1; i < workers; ++i)
        threads.emplace_back(work, std::cref(m_variants), std::cref(settings), std::cref(m_observer),
                             std::cref(options), std::ref(queue));
    work(m_variants, settings, m_observer, options, queue);
    for (std::thread &thread : threads)
        thread.join();
    m_effects = queue.ruleEffects.front();
    m_picks = picks ? picks->picks(settings.front().buyOrder) : std::vector<StockPick>();
    m_counts = queue.counts;
    const QStringList codes(queue.codes.begin(), queue.codes.end());
    std::vector<TradeBook> finished;
    for (size_t variant = 0; variant < settings.size(); ++variant) {
        std::vector<DayLimitedFiling> parts;
        for (std::vector<DayLimitedFiling> &worker : queue.filingsByWorker)
            parts.push_back(std::move(worker[variant]));
        finished.push_back(DayLimitedFiling::merge(std::move(parts)));
        finished.back().setCodes(codes);
    }
    return finished;
}
