#pragma once

#include "RuleEffects.h"
#include "RunCounts.h"
#include "TodayPicks.h"
#include "TradeBook.h"
#include "market/Stock.h"
#include "market/StockFileList.h"
#include "script/CompiledStrategy.h"

#include <atomic>
#include <functional>
#include <memory>
#include <optional>

// One backtest, as both front ends start it: the configuration, then the
// script's `config.` lines, then the data folder; compiled once and listed
// once. run() shares the stocks out over worker threads and merges their
// trades in file order, so the book is the same for any number of threads.
// To look at each stock's bars as it is walked, setObserver(); to go on from
// the trades, take run()'s book (nothing is kept or read twice for either).
// screen() walks the same way for the stocks that signal a buy on the latest day.
class BacktestRun {
public:
    enum class Problem { None, CompileError, NoBuyStatement, NoData };

    // Called once per file, in file order, with the percentage done before
    // that file and its path. May be called from a worker thread.
    using Progress = std::function<void(int percent, const QString &path)>;

    // Sees the bars of every stock simulated (the files with more than six
    // days) with the file's place in the listing. Called from the workers,
    // several at once, each call with its own file index, in any order.
    using StockObserver = std::function<void(int fileIndex, const StockSeries &series)>;

    // One strategy of a run over several. Variants with the same
    // `signalGroup` have the same statements: their conditions are evaluated
    // once per stock for all of them, and only the trade settings differ.
    struct Variant {
        std::shared_ptr<const CompiledStrategy> strategy;
        int signalGroup = 0;
    };

    // `configText` holds configuration lines ("config.conf"'s text); a
    // non-empty `dataDir` replaces the configured K-line directory.
    BacktestRun(const QString &configText, const QString &scriptText, const QString &dataDir = {});
    // Several compiled strategies over one reading of the market: every file
    // is read once and each strategy walks its bars. All read the data
    // settings of the first, which also answers config() and strategy().
    explicit BacktestRun(std::vector<Variant> variants);
    BacktestRun(const BacktestRun &) = delete;
    BacktestRun &operator=(const BacktestRun &) = delete;

    Problem problem() const { return m_problem; }
    // The user's words for the problem: "预编译出错" or "警告", and the text.
    QString problemTitle() const;
    QString problemText() const;
    // Why the line named by problemText() did not compile; empty for other problems.
    const QString &problemReason() const { return m_errorReason; }
    // The 1-based line that did not compile, or 0.
    int errorLine() const { return m_problem == Problem::CompileError ? m_errorLine : 0; }

    // Valid when problem() is None or NoData.
    const std::shared_ptr<const CompiledStrategy> &strategy() const { return m_strategy; }
    const StrategyConfig &config() const { return m_strategy->config(); }
    const StockFileList &files() const { return m_files; }

    void setJobs(int jobs) { m_jobs = jobs; }
    void setProgress(Progress progress) { m_progress = std::move(progress); }
    void setObserver(StockObserver observer) { m_observer = std::move(observer); }
    // Runs under these real-account rules instead of the script's own.
    void setRules(const TradeRules &rules) { m_rules = rules; }

    // Every series is cut after this "yyyy-MM-dd" date before anything reads
    // it, as if the data ended there.
    void setLastDate(const QString &date) { m_lastDate = date; }
    // run() also names today's picks (picks()), those of the first variant.
    void setPicking(bool picking) { m_picking = picking; }

    // From any thread: no further stock is started.
    void cancel() { m_cancelled = true; }
    bool isCancelled() const { return m_cancelled; }

    // The trades with the per-day buy limit applied; only when problem() is
    // None. A cancelled run gives the trades of the stocks finished in order.
    TradeBook run();
    // Every variant's trades, in the order the variants were given.
    std::vector<TradeBook> runAll();
    // The picks of the last run() that was asked for them (setPicking).
    const std::vector<StockPick> &picks() const { return m_picks; }
    // Today's picks alone: the same walk without simulating any trade.
    std::vector<StockPick> screen();
    // What the real-account rules changed in the last run() (for the first variant).
    const RuleEffects &ruleEffects() const { return m_effects; }
    // How the listed files of the last run() were read and what became of
    // its buy signals; a cancelled run counts the files it took up.
    const RunCounts &counts() const { return m_counts; }

    // The number of worker threads when the user names none.
    static int defaultJobs();

private:
    std::vector<TradeBook> walk(bool simulate);

    Problem m_problem = Problem::None;
    int m_errorLine = 0;
    QString m_errorReason;
    std::shared_ptr<const CompiledStrategy> m_strategy;
    std::vector<Variant> m_variants;
    StockFileList m_files;
    int m_jobs = defaultJobs();
    Progress m_progress;
    StockObserver m_observer;
    std::optional<TradeRules> m_rules;
    QString m_lastDate;
    bool m_picking = false;
    std::vector<StockPick> m_picks;
    RuleEffects m_effects;
    RunCounts m_counts;
    std::atomic<bool> m_cancelled{false};
};
