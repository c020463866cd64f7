#include "BacktestReport.h"
#include "CliOutput.h"
#include "Commands.h"
#include "ScriptInput.h"
#include "engine/BacktestRun.h"
#include "engine/OutputCsv.h"
#include "engine/RunSummary.h"
#include "market/TextFile.h"
#include "script/ScriptPlaceholders.h"
#include "script/ScriptWarnings.h"

#include <QCommandLineParser>

#include <future>

namespace {

struct BacktestOptions {
    QString script;
    QString data;
    QString out = QStringLiteral("output.csv");
    QString config;
    QString report; // a folder for the report files, or empty for none
    bool compareRules = false;
    int jobs = BacktestRun::defaultJobs();
    TextEncoding encoding = TextEncoding::Gbk;
};

// The options, or an error text.
QString readOptions(const QStringList &arguments, BacktestOptions &options)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Backtests SCRIPT over the data directory."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("SCRIPT"), QStringLiteral("the strategy script"));
    const QCommandLineOption data(QStringLiteral("data"), QStringLiteral("K-line directory"),
                                  QStringLiteral("DIR"));
    const QCommandLineOption out(QStringLiteral("out"), QStringLiteral("CSV file"), QStringLiteral("FILE"),
                                 options.out);
    const QCommandLineOption config(QStringLiteral("config"), QStringLiteral("configuration file"),
                                    QStringLiteral("FILE"));
    const QCommandLineOption jobs(QStringLiteral("jobs"), QStringLiteral("worker threads"),
                                  QStringLiteral("N"));
    const QCommandLineOption encoding(QStringLiteral("encoding"),
                                      QStringLiteral("CSV encoding: gbk or utf-8"), QStringLiteral("NAME"),
                                      QStringLiteral("gbk"));
    const QCommandLineOption report(QStringLiteral("report"),
                                    QStringLiteral("write report.json, equity.csv and report.html into DIR"),
                                    QStringLiteral("DIR"));
    const QCommandLineOption compareRules(
        QStringLiteral("compare-rules"),
        QStringLiteral("also run with every real-account rule on and print both summaries"));
    parser.addOptions({data, out, config, jobs, encoding, report, compareRules});
    if (QString problem = Commands::parseScript(parser, arguments, options.script); !problem.isEmpty())
        return problem;

    options.data = parser.value(data);
    options.out = parser.value(out);
    options.config = parser.value(config);
    options.report = parser.value(report);
    options.compareRules = parser.isSet(compareRules);
    if (parser.isSet(jobs)) {
        bool ok = false;
        options.jobs = parser.value(jobs).toInt(&ok);
        if (!ok || options.jobs < 1)
            return QStringLiteral("--jobs 需要正整数 / --jobs needs a positive number");
    }
    const QString encodingName = parser.value(encoding).toLower();
    if (encodingName == QLatin1String("utf-8") || encodingName == QLatin1String("utf8"))
        options.encoding = TextEncoding::Utf8;
    else if (encodingName != QLatin1String("gbk"))
        return QStringLiteral("--encoding 只能是 gbk 或 utf-8 / --encoding must be gbk or utf-8");
    return {};
}

// The summary box's lines ("无数据" gets the line end the figures carry), and
// what the real-account rules changed when the run followed any.
QString summaryLines(const TradeBook &book, const StrategyConfig &config, const RuleEffects &effects)
{
    QString text = RunSummary::fromBook(book).text();
    if (!text.endsWith(QLatin1Char('\n')))
        text += QLatin1Char('\n');
    if (config.rules.any())
        text += effects.text() + QLatin1Char('\n');
    return text;
}

// Every value that reads as 0 because it is not a number: the run goes on
// with 0, and the user should know.
void printValuesReadAsZero(const QString &fileName, const QString &text)
{
    for (const ScriptWarning &warning : findScriptWarnings(text)) {
        if (warning.kind == ScriptWarning::Kind::NotANumber)
            CliOutput::err(warningLine(fileName, warning) + QLatin1Char('\n'));
    }
}

// The listed files that gave no stock to walk, by reason.
void printSkippedFiles(const StockSkipCounts &counts)
{
    for (size_t i = 1; i < StockSkipCounts::kOutcomes; ++i) {
        const auto skip = StockSkip(i);
        if (counts.count(skip) > 0)
            CliOutput::err(QStringLiteral("跳过%1个文件 / skipped %1 files: %2\n")
                               .arg(counts.count(skip))
                               .arg(stockSkipText(skip)));
    }
}

// Runs like the workbench's run button; the exit code.
int run(const BacktestOptions &options)
{
    const std::optional<ScriptInput> input = ScriptInput::read(options.script, options.config);
    if (!input)
        return Commands::UsageError;
    // The script runs as written; a placeholder left in it is most likely a
    // sweep's script run by mistake.
    const QString leftover = ScriptPlaceholders::leftoverWarning(input->scriptText);
    if (!leftover.isEmpty())
        CliOutput::err(QStringLiteral("警告: %1 (orvel-cli sweep --vary)\n").arg(leftover));
    BacktestRun run(input->configText, input->scriptText, options.data);
    if (run.problem() != BacktestRun::Problem::None) {
        CliOutput::err(run.problemTitle() + QStringLiteral(": ") + run.problemText() + QLatin1Char('\n'));
        if (!run.problemReason().isEmpty())
            CliOutput::err(run.problemReason() + QLatin1Char('\n'));
        return run.problem() == BacktestRun::Problem::NoData ? Commands::NoData : Commands::CompileError;
    }
    printValuesReadAsZero(options.config.isEmpty() ? QStringLiteral("config.conf") : options.config,
                          input->configText);
    printValuesReadAsZero(options.script, input->scriptText);
    CliOutput::ProgressBar progress;
    const auto showProgress = [&progress](int percent, const QString &) { progress.show(percent); };
    BacktestReport report;
    run.setJobs(options.jobs);
    run.setProgress(showProgress);
    if (!options.report.isEmpty())
        run.setObserver(report.observer());
    const TradeBook book = run.run();
    progress.clear();
    printSkippedFiles(run.counts().files);
    const StrategyConfig &config = run.config();
    // Kept apart: the comparison's second run has effects of its own.
    const RuleEffects effects = run.ruleEffects();
    // Summed while the file is written: most of that time goes to waiting for the disk.
    std::future<QString> summary =
        std::async(std::launch::async, [&] { return summaryLines(book, config, effects); });
    const QString writeError = writeOutputCsv(options.out, book, options.encoding);
    if (!writeError.isEmpty())
        CliOutput::err(QStringLiteral("无法写入 / cannot write %1: %2\n").arg(options.out, writeError));
    if (options.compareRules) {
        // The same script as a real account could trade it; only its summary is shown.
        StrategyConfig real = config;
        real.rules = config.rules.withEveryRule();
        run.setRules(real.rules);
        run.setObserver({});
        const TradeBook realBook = run.run();
        CliOutput::out(QStringLiteral("按脚本:\n") + summary.get() +
                       QStringLiteral("按实盘规则:\n") + summaryLines(realBook, real, run.ruleEffects()));
    } else {
        CliOutput::out(summary.get());
    }
    if (!writeError.isEmpty())
        return Commands::Unwritable;
    const std::optional<RuleEffects> reportedEffects =
        config.rules.any() ? std::optional(effects) : std::nullopt;
    if (!options.report.isEmpty() && !report.write(options.report, book, config.report, reportedEffects))
        return Commands::Unwritable;
    return Commands::Ok;
}

} // namespace

namespace Commands {

int backtest(const QStringList &arguments)
{
    BacktestOptions options;
    const QString problem = readOptions(arguments, options);
    if (!problem.isEmpty())
        return refuseOptions(problem, arguments);
    return run(options);
}

} // namespace Commands
