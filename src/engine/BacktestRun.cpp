#include "BacktestRun.h"

#include "StockSimulator.h"
#include "market/StockLoader.h"

#include <mutex>
#include <thread>
#include <vector>

namespace {

// Hands out files to workers and reports progress in file order as soon as
// every earlier file is done.
class FileQueue {
public:
    FileQueue(const StockFileList &files, const BacktestRun::Progress &progress, DayLimitedFiling &book,
              const std::atomic<bool> &cancelled)
        : files(files), tradesByFile(size_t(files.size())), m_progress(progress), m_book(book),
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
        while (m_reported < files.size() && m_done[size_t(m_reported)]) {
            std::vector<TradeRecord> &trades = tradesByFile[size_t(m_reported)];
            for (TradeRecord &trade : trades)
                m_book.file(std::move(trade));
            std::vector<TradeRecord>().swap(trades);
            // The share done before this file: the first reports 0, none 100.
            if (m_progress)
                m_progress(int(qint64(m_reported) * 100 / files.size()), files[m_reported]);
            ++m_reported;
        }
    }

    void addEffects(const RuleEffects &effects)
    {
        const std::lock_guard lock(m_mutex);
        ruleEffects += effects;
    }

    const StockFileList &files;
    RuleEffects ruleEffects;
    // Filled by the workers, emptied into the book in file order.
    std::vector<std::vector<TradeRecord>> tradesByFile;

private:
    const BacktestRun::Progress &m_progress;
    DayLimitedFiling &m_book;
    const std::atomic<bool> &m_cancelled;
    std::atomic<int> m_next{0};
    std::mutex m_mutex;
    std::vector<bool> m_done;
    int m_reported = 0;
};

// One worker: its own copy of the statements (they keep per-stock values),
// its own indicator cache and buffers, reused from stock to stock.
void work(const CompiledStrategy &strategy, const StrategyConfig &config, const BacktestRun::StockObserver &observer,
          FileQueue &queue)
{
    Script script = strategy.script();
    IndicatorCache indicators;
    StockLoader loader;
    StockSeries series;
    StockSimulator simulator(config);
    for (int index = queue.take(); index >= 0; index = queue.take()) {
        if (loader.load(queue.files[index], config.kLineSource(), series)) {
            if (observer)
                observer(index, series);
            script.bind(series.view(), indicators);
            simulator.simulateStock(series, script, queue.tradesByFile[size_t(index)]);
        }
        queue.finish(index);
    }
    queue.addEffects(simulator.ruleEffects());
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
        return;
    }
    m_strategy = std::move(compiled.strategy);
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

TradeBook BacktestRun::run()
{
    StrategyConfig settings = config();
    if (m_rules)
        settings.rules = *m_rules;
    DayLimitedFiling book(settings.maxCount, settings.buyOrder);
    FileQueue queue(m_files, m_progress, book, m_cancelled);
    const int workers = std::clamp(m_jobs, 1, std::max(1, int(m_files.size())));
    std::vector<std::thread> threads;
    for (int i = 1; i < workers; ++i)
        threads.emplace_back(work, std::cref(*m_strategy), std::cref(settings), std::cref(m_observer),
                             std::ref(queue));
    work(*m_strategy, settings, m_observer, queue);
    for (std::thread &thread : threads)
        thread.join();
    m_effects = queue.ruleEffects;
    return book.finish();
}
