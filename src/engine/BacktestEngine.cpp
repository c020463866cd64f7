#include "BacktestEngine.h"

#include "StockSimulator.h"
#include "market/StockLoader.h"
#include "script/Script.h"

#include <atomic>
#include <mutex>
#include <thread>
#include <vector>

namespace {

// Hands out files to workers and reports progress in file order as soon as
// every earlier file is done.
class FileQueue {
public:
    FileQueue(const StockFileList &files, const BacktestEngine::Progress &progress, DayLimitedFiling &book)
        : files(files), tradesByFile(size_t(files.size())), m_progress(progress), m_book(book),
          m_done(size_t(files.size()), false)
    {
    }

    // The next file to process, or -1.
    int take()
    {
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
    const BacktestEngine::Progress &m_progress;
    DayLimitedFiling &m_book;
    std::atomic<int> m_next{0};
    std::mutex m_mutex;
    std::vector<bool> m_done;
    int m_reported = 0;
};

// One worker: its own compiled statements (they cache per-stock values) and
// its own buffers, reused from stock to stock.
void work(const QString &scriptText, const StrategyConfig &config, FileQueue &queue,
          const BacktestEngine::StockObserver &observer)
{
    StrategyConfig scratch = config;
    Script script;
    int errorLine = 0;
    compileScript(script, scratch, scriptText, errorLine);
    StockLoader loader;
    StockSeries series;
    StockSimulator simulator(config);
    for (int index = queue.take(); index >= 0; index = queue.take()) {
        if (loader.loadStockSeries(queue.files[index], config, series)) {
            script.bind(series.view());
            simulator.simulateStock(series, script, queue.tradesByFile[size_t(index)]);
            if (observer)
                observer(index, series);
        }
        queue.finish(index);
    }
    queue.addEffects(simulator.ruleEffects());
}

} // namespace

BacktestEngine::BacktestEngine(QString scriptText, StrategyConfig config)
    : m_scriptText(std::move(scriptText)), m_config(std::move(config))
{
}

int BacktestEngine::defaultJobs() { return int(std::max(1u, std::thread::hardware_concurrency())); }

TradeBook BacktestEngine::run(const StockFileList &files, int jobs, const Progress &progress,
                              const StockObserver &observer, RuleEffects *effects) const
{
    DayLimitedFiling book(m_config.maxCount, m_config.buyOrder);
    FileQueue queue(files, progress, book);
    const int workers = std::clamp(jobs, 1, std::max(1, int(files.size())));
    std::vector<std::thread> threads;
    for (int i = 1; i < workers; ++i)
        threads.emplace_back(work, std::cref(m_scriptText), std::cref(m_config), std::ref(queue),
                             std::cref(observer));
    work(m_scriptText, m_config, queue, observer);
    for (std::thread &thread : threads)
        thread.join();
    if (effects)
        *effects = queue.ruleEffects;
    return book.finish();
}
