#include "CliOutput.h"
#include "Commands.h"
#include "ScriptInput.h"
#include "market/SafeFile.h"
#include "market/TextFile.h"
#include "sweep/SweepRun.h"
#include "sweep/SweepTable.h"

#include <QCommandLineParser>
#include <QRegularExpression>

namespace {

// Beyond this a grid is most likely a typing mistake: it runs only when asked twice.
constexpr qint64 kLargeGrid = 100000;

struct SweepOptions {
    QString script;
    SweepGrid grid;
    QString data;
    QString config;
    QString out = QStringLiteral("sweep.csv");
    QString sort = SweepTable::defaultKey();
    int top = 10;
    int shard = 1;
    int shards = 1;
    int jobs = BacktestRun::defaultJobs();
};

// Reads "--shard I/N" and "--top K"; an error text or empty.
QString readNumbers(const QCommandLineParser &parser, SweepOptions &options)
{
    if (parser.isSet(QStringLiteral("shard"))) {
        static const QRegularExpression form(QStringLiteral("^(\\d{1,6})/(\\d{1,6})$"));
        const QRegularExpressionMatch match = form.match(parser.value(QStringLiteral("shard")));
        options.shard = match.captured(1).toInt();
        options.shards = match.captured(2).toInt();
        if (!match.hasMatch() || options.shard < 1 || options.shard > options.shards)
            return QStringLiteral("--shard 应为 I/N, 1≤I≤N / --shard must be I/N with 1 <= I <= N");
    }
    bool ok = true;
    if (parser.isSet(QStringLiteral("top")))
        options.top = parser.value(QStringLiteral("top")).toInt(&ok);
    if (!ok || options.top < 0)
        return QStringLiteral("--top 需要非负整数 / --top needs a number of rows");
    if (parser.isSet(QStringLiteral("jobs")))
        options.jobs = parser.value(QStringLiteral("jobs")).toInt(&ok);
    if (!ok || options.jobs < 1)
        return QStringLiteral("--jobs 需要正整数 / --jobs needs a positive number");
    return {};
}

QString readOptions(const QStringList &arguments, SweepOptions &options)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Runs SCRIPT once for every combination of its $name placeholders' values."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("SCRIPT"), QStringLiteral("the strategy script"));
    parser.addOptions({
        {QStringLiteral("vary"), QStringLiteral("values of a placeholder: name=FROM:TO[:STEP] or name=a,b,c"),
         QStringLiteral("VALUES")},
        {QStringLiteral("data"), QStringLiteral("K-line directory"), QStringLiteral("DIR")},
        {QStringLiteral("config"), QStringLiteral("configuration file"), QStringLiteral("FILE")},
        {QStringLiteral("jobs"), QStringLiteral("worker threads"), QStringLiteral("N")},
        {QStringLiteral("sort"), QStringLiteral("column the table ranks by"), QStringLiteral("KEY")},
        {QStringLiteral("top"), QStringLiteral("rows of the table (default 10)"), QStringLiteral("K")},
        {QStringLiteral("out"), QStringLiteral("CSV file (default sweep.csv)"), QStringLiteral("FILE")},
        {QStringLiteral("shard"), QStringLiteral("run only the I-th of N slices of the grid"),
         QStringLiteral("I/N")},
        {QStringLiteral("force"), QStringLiteral("run a grid of more than 100000 combinations")},
    });
    if (QString problem = Commands::parseScript(parser, arguments, options.script); !problem.isEmpty())
        return problem;
    options.data = parser.value(QStringLiteral("data"));
    options.config = parser.value(QStringLiteral("config"));
    if (parser.isSet(QStringLiteral("out")))
        options.out = parser.value(QStringLiteral("out"));
    if (parser.isSet(QStringLiteral("sort")))
        options.sort = parser.value(QStringLiteral("sort"));
    const QStringList varied = parser.values(QStringLiteral("vary"));
    if (varied.isEmpty())
        return QStringLiteral("需要至少一个 --vary / expected at least one --vary");
    for (const QString &axis : varied) {
        const QString problem = options.grid.addAxis(axis);
        if (!problem.isEmpty())
            return problem;
    }
    if (!SweepTable(options.grid.names()).hasColumn(options.sort))
        return QStringLiteral("--sort 不是列名 / --sort names no column: %1").arg(options.sort);
    if (options.grid.size() > kLargeGrid && !parser.isSet(QStringLiteral("force")))
        return QStringLiteral("共%1种组合, 超过%2; 确要运行请加 --force / the grid has %1 combinations, more "
                              "than %2: add --force to run it")
            .arg(options.grid.size())
            .arg(kLargeGrid);
    return readNumbers(parser, options);
}

// Writes the file and shows the best rows; the exit code.
int finish(const SweepTable &table, const QString &out, const QString &sort, int top)
{
    const QString error = SafeFile::replace(out, table.csvBytes(), SymlinkRule::FollowToRegularFile);
    CliOutput::out(table.topText(sort, top));
    if (error.isEmpty())
        return Commands::Ok;
    CliOutput::err(QStringLiteral("无法写入 / cannot write %1: %2\n").arg(out, error));
    return Commands::Unwritable;
}

int runSweep(const SweepOptions &options)
{
    const std::optional<ScriptInput> input = ScriptInput::read(options.script, options.config);
    if (!input)
        return Commands::UsageError;
    SweepRun sweep(input->configText, input->scriptText, options.data, options.grid);
    CliOutput::ProgressBar progress;
    sweep.setJobs(options.jobs);
    sweep.setProgress([&progress](int percent) { progress.show(percent); });
    const auto [first, last] = options.grid.shard(options.shard, options.shards);
    const std::vector<SweepResult> results = sweep.run(first, last);
    if (sweep.problem() != SweepRun::Problem::None) {
        CliOutput::err(sweep.problemText() + QLatin1Char('\n'));
        return sweep.problem() == SweepRun::Problem::NoData ? Commands::NoData : Commands::CompileError;
    }
    SweepTable table(options.grid.names());
    for (const SweepResult &result : results)
        table.add(result);
    return finish(table, options.out, options.sort, options.top);
}

// The shard files in shard order joined into one table, or nothing after saying why not.
std::optional<SweepTable> mergedTable(const QStringList &files)
{
    std::optional<SweepTable> merged;
    for (const QString &file : files) {
        ByteBuffer bytes;
        std::optional<SweepTable> table;
        if (TextFile::readBytes(file, bytes))
            table = SweepTable::fromCsv(QByteArray(bytes.data(), qsizetype(bytes.size())));
        if (!table) {
            CliOutput::err(QStringLiteral("不是参数优化结果 / not a sweep result: %1\n").arg(file));
            return std::nullopt;
        }
        if (merged && !merged->append(*table)) {
            CliOutput::err(
                QStringLiteral("列与前面的文件不同 / its columns differ from the first file's: %1\n")
                    .arg(file));
            return std::nullopt;
        }
        if (!merged)
            merged = std::move(table);
    }
    return merged;
}

} // namespace

namespace Commands {

int sweepMerge(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Joins the files of `sweep --shard 1/N … N/N`, given in that order."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("shard results, in shard order"),
                                 QStringLiteral("FILE..."));
    parser.addOptions({
        {QStringLiteral("out"), QStringLiteral("CSV file (default sweep.csv)"), QStringLiteral("FILE")},
        {QStringLiteral("sort"), QStringLiteral("column the table ranks by"), QStringLiteral("KEY")},
        {QStringLiteral("top"), QStringLiteral("rows of the table (default 10)"), QStringLiteral("K")},
    });
    if (!parser.parse(arguments))
        return refuseOptions(parser.errorText(), arguments);
    if (parser.isSet(QStringLiteral("help")) || parser.positionalArguments().isEmpty())
        return refuseOptions(parser.helpText(), arguments);
    SweepOptions options;
    if (parser.isSet(QStringLiteral("out")))
        options.out = parser.value(QStringLiteral("out"));
    if (parser.isSet(QStringLiteral("sort")))
        options.sort = parser.value(QStringLiteral("sort"));
    const QString problem = readNumbers(parser, options);
    if (!problem.isEmpty())
        return refuseOptions(problem, arguments);
    const std::optional<SweepTable> table = mergedTable(parser.positionalArguments());
    if (!table)
        return UsageError;
    if (!table->hasColumn(options.sort))
        return refuseOptions(QStringLiteral("--sort 不是列名 / --sort names no column: %1").arg(options.sort),
                             arguments);
    return finish(*table, options.out, options.sort, options.top);
}

int sweep(const QStringList &arguments)
{
    SweepOptions options;
    const QString problem = readOptions(arguments, options);
    if (!problem.isEmpty())
        return refuseOptions(problem, arguments);
    return runSweep(options);
}

} // namespace Commands
