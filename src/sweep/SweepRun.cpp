#include "SweepRun.h"

#include "engine/BacktestRun.h"
#include "report/ReportTrade.h"
#include "script/ScriptPlaceholders.h"

#include <QHash>

#include <thread>

namespace {

// The lines that decide the conditions: combinations whose filled-in
// statements read alike evaluate them once.
QString statementLines(const QString &script)
{
    QStringList lines;
    for (const QString &line : splitScriptLines(script)) {
        if (line.startsWith(QLatin1String("buy.")) || line.startsWith(QLatin1String("sale.")))
            lines << line;
    }
    return lines.join(QLatin1Char('\n'));
}

QString sourceKey(const StrategyConfig &config)
{
    const KLineSource source = config.kLineSource();
    return source.dir + QLatin1Char('\n') + source.format + QLatin1Char('\n') + source.stocks;
}

QString combinationText(const QStringList &names, const QStringList &values)
{
    QStringList pairs;
    for (qsizetype i = 0; i < names.size(); ++i)
        pairs << names[i] + QLatin1Char('=') + values[i];
    return pairs.join(QLatin1Char(' '));
}

// The number of `key`: the next free one when it is new.
size_t numberOf(QHash<QString, size_t> &numbers, const QString &key)
{
    const auto found = numbers.constFind(key);
    if (found != numbers.constEnd())
        return *found;
    const size_t number = size_t(numbers.size());
    numbers.insert(key, number);
    return number;
}

// Runs `task(i)` for i in [0, count) on up to `jobs` threads.
void forEachOnThreads(size_t count, int jobs, const std::function<void(size_t)> &task)
{
    std::atomic<size_t> next{0};
    const auto worker = [&] {
        for (size_t i = next++; i < count; i = next++)
            task(i);
    };
    std::vector<std::thread> threads;
    for (int i = 1; i < std::min<qint64>(jobs, qint64(count)); ++i)
        threads.emplace_back(worker);
    worker();
    for (std::thread &thread : threads)
        thread.join();
}

} // namespace

SweepRun::SweepRun(const QString &configText, const QString &scriptText, const QString &dataDir,
                   SweepGrid grid)
    : m_configText(configText), m_scriptText(scriptText), m_dataDir(dataDir), m_grid(std::move(grid))
{
    m_problemText = ScriptPlaceholders::mismatch(ScriptPlaceholders::names(scriptText), m_grid.names());
    if (!m_problemText.isEmpty())
        m_problem = Problem::Placeholders;
}

QString SweepRun::scriptAt(qint64 index) const
{
    const QStringList names = m_grid.names();
    const QStringList values = m_grid.valuesAt(index);
    QHash<QString, QString> filled;
    for (qsizetype i = 0; i < names.size(); ++i)
        filled.insert(names[i], values[i]);
    return ScriptPlaceholders::substitute(m_scriptText, filled);
}

std::vector<SweepResult> SweepRun::run(qint64 first, qint64 last)
{
    std::vector<SweepResult> results;
    if (m_problem != Problem::None || !compiles(first, last))
        return results;
    const qint64 total = std::max<qint64>(last - first, 1);
    for (qint64 from = first; from < last; from += kBatch) {
        const qint64 to = std::min(last, from + kBatch);
        const int percentFrom = int((from - first) * 100 / total);
        if (!runBatch(from, to, percentFrom, int((to - first) * 100 / total), results))
            break;
    }
    return results;
}

bool SweepRun::compiles(qint64 first, qint64 last)
{
    StrategyConfig base;
    base.applyLines(m_configText);
    for (qint64 index = first; index < last && !m_cancelled; ++index) {
        const CompileResult compiled = CompiledStrategy::compile(base, scriptAt(index), m_dataDir);
        if (compiled.status == CompileResult::Status::Ok)
            continue;
        m_problem = Problem::CompileError;
        m_problemText = QStringLiteral("%1: 预编译出错: %2")
                            .arg(combinationText(m_grid.names(), m_grid.valuesAt(index)),
                                 compiled.status == CompileResult::Status::ErrorAtLine
                                     ? QStringLiteral("第:%1行有错误").arg(compiled.line)
                                     : QStringLiteral("脚本缺少买点"));
        return false;
    }
    return !m_cancelled;
}

bool SweepRun::runBatch(qint64 first, qint64 last, int percentFrom, int percentTo,
                        std::vector<SweepResult> &results)
{
    StrategyConfig base;
    base.applyLines(m_configText);
    // Combinations reading different data (a placeholder in the data
    // settings) need a reading each.
    struct Reading {
        std::vector<BacktestRun::Variant> variants;
        std::vector<size_t> places; // in `results`
    };
    std::vector<Reading> readings;
    QHash<QString, size_t> readingOfSource;
    QHash<QString, size_t> signalGroups;
    const size_t firstResult = results.size();
    for (qint64 index = first; index < last; ++index) {
        const QString script = scriptAt(index);
        CompileResult compiled = CompiledStrategy::compile(base, script, m_dataDir);
        const QString source = sourceKey(compiled.strategy->config());
        const size_t reading = numberOf(readingOfSource, source);
        if (reading == readings.size())
            readings.emplace_back();
        const int group = int(numberOf(signalGroups, source + statementLines(script)));
        readings[reading].variants.push_back({std::move(compiled.strategy), group});
        readings[reading].places.push_back(firstResult + size_t(index - first));
    }
    results.resize(firstResult + size_t(last - first));
    for (size_t r = 0; r < readings.size(); ++r) {
        const int from = percentFrom + int(qint64(r) * (percentTo - percentFrom) / qint64(readings.size()));
        const int to = percentFrom + int(qint64(r + 1) * (percentTo - percentFrom) / qint64(readings.size()));
        if (!runReading(readings[r].variants, readings[r].places, from, to, results)) {
            results.resize(firstResult);
            return false;
        }
    }
    for (qint64 index = first; index < last; ++index)
        results[firstResult + size_t(index - first)].values = m_grid.valuesAt(index);
    return true;
}

bool SweepRun::runReading(const std::vector<BacktestRun::Variant> &variants,
                          const std::vector<size_t> &places, int percentFrom, int percentTo,
                          std::vector<SweepResult> &results)
{
    BacktestRun run(variants);
    if (run.problem() != BacktestRun::Problem::None) {
        m_problem = Problem::NoData;
        m_problemText = run.problemTitle() + QStringLiteral(": ") + run.problemText();
        return false;
    }
    ReportMarket market;
    ++m_readings;
    run.setJobs(m_jobs);
    // Called for every file, so a cancel is seen within one stock.
    run.setProgress([&](int percent, const QString &) {
        if (m_cancelled)
            run.cancel();
        if (m_progress)
            m_progress(percentFrom + percent * (percentTo - percentFrom) / 100);
    });
    run.setObserver([&market](int fileIndex, const StockSeries &series) {
        market.addStock(fileIndex, series.code, series.view());
    });
    const std::vector<TradeBook> books = run.runAll();
    if (m_cancelled)
        return false;
    forEachOnThreads(books.size(), m_jobs, [&](size_t i) {
        SweepResult &result = results[places[i]];
        result.summary = RunSummary::fromBook(books[i]);
        const ReportSettings &settings = variants[i].strategy->config().report;
        const AccountFigures account = computeReport(reportTradesOf(books[i]), market, settings).account;
        result.totalReturn = account.totalReturn;
        result.maxDrawdown = account.maxDrawdown;
        result.sharpe = account.sharpe;
    });
    return true;
}
