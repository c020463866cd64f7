#pragma once

#include "SweepGrid.h"
#include "engine/BacktestRun.h"
#include "engine/RunSummary.h"
#include "report/StrategyReport.h"

#include <QString>

#include <atomic>
#include <functional>
#include <vector>

// What one combination of a sweep gave.
struct SweepResult {
    QStringList values; // in the grid's order of names
    RunSummary summary;
    Figure totalReturn, maxDrawdown, sharpe; // the report's account
};

// A sweep: the script with its placeholders filled in for each combination
// of the grid, every combination run by BacktestRun exactly as a backtest of
// the filled-in script would run. Combinations are run many at once, so the
// market is read once for them, and those differing only in trade settings
// evaluate their conditions once.
class SweepRun {
public:
    enum class Problem { None, Placeholders, CompileError, NoData };
    // The share of the whole sweep done.
    using Progress = std::function<void(int percent)>;

    // Checks that the grid names exactly the script's placeholders.
    SweepRun(const QString &configText, const QString &scriptText, const QString &dataDir, SweepGrid grid);

    Problem problem() const { return m_problem; }
    QString problemText() const { return m_problemText; }
    const SweepGrid &grid() const { return m_grid; }

    void setJobs(int jobs) { m_jobs = jobs; }
    void setProgress(Progress progress) { m_progress = std::move(progress); }
    // From any thread: the run ends soon after, without the unfinished results.
    void cancel() { m_cancelled = true; }
    bool isCancelled() const { return m_cancelled; }

    // The results of combinations [first, last) in grid order. Each
    // combination is compiled first: one that does not compile ends the
    // sweep before any runs, with problem() CompileError naming it.
    std::vector<SweepResult> run(qint64 first, qint64 last);

    // How many times run() read the market.
    int readings() const { return m_readings; }

    // The script of one combination.
    QString scriptAt(qint64 index) const;

    // Combinations run in one reading of the market; more are read again, so
    // that the books held at once stay bounded.
    static constexpr qint64 kBatch = 500;

private:
    bool compiles(qint64 first, qint64 last);
    bool runBatch(qint64 first, qint64 last, int percentFrom, int percentTo,
                  std::vector<SweepResult> &results);
    bool runReading(const std::vector<BacktestRun::Variant> &variants, const std::vector<size_t> &places,
                    int percentFrom, int percentTo, std::vector<SweepResult> &results);

    QString m_configText;
    QString m_scriptText;
    QString m_dataDir;
    SweepGrid m_grid;
    Problem m_problem = Problem::None;
    QString m_problemText;
    int m_jobs = 1;
    int m_readings = 0;
    Progress m_progress;
    std::atomic<bool> m_cancelled{false};
};
