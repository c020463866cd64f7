#include "CliOutput.h"
#include "Commands.h"
#include "market/KLineConverter.h"

#include <QCommandLineParser>

namespace {

struct ConvertOptions {
    KLineSource source;
    QString target;
};

// The options, or an error text.
QString readOptions(const QStringList &arguments, ConvertOptions &options)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Writes a folder of day files (tdx) or CSV files (csv) as K-line text files."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("SRC"), QStringLiteral("the folder to read"));
    const QCommandLineOption from(QStringLiteral("from"), QStringLiteral("format of SRC: tdx or csv"),
                                  QStringLiteral("FORMAT"));
    const QCommandLineOption data(QStringLiteral("data"), QStringLiteral("K-line directory to write"),
                                  QStringLiteral("DIR"));
    const QCommandLineOption stocks(QStringLiteral("stocks"),
                                    QStringLiteral("only: A-share stocks; all: every code"),
                                    QStringLiteral("WHICH"), QStringLiteral("only"));
    parser.addOptions({from, data, stocks});
    const QString missing = QStringLiteral("需要一个源文件夹 / expected one SRC folder");
    if (QString problem = Commands::parseOne(parser, arguments, missing, options.source.dir);
        !problem.isEmpty())
        return problem;
    options.source.format = parser.value(from);
    if (options.source.kind() != KLineFormat::Tdx && options.source.kind() != KLineFormat::Csv)
        return QStringLiteral("--from 只能是 tdx 或 csv / --from must be tdx or csv");
    options.source.stocks = parser.value(stocks);
    if (options.source.stocks != QLatin1String("only") && options.source.stocks != QLatin1String("all"))
        return QStringLiteral("--stocks 只能是 only 或 all / --stocks must be only or all");
    options.target = parser.value(data);
    if (options.target.isEmpty())
        return QStringLiteral("需要 --data DIR / --data DIR is needed");
    return {};
}

} // namespace

namespace Commands {

int convert(const QStringList &arguments)
{
    ConvertOptions options;
    const QString problem = readOptions(arguments, options);
    if (!problem.isEmpty())
        return refuseOptions(problem, arguments);

    CliOutput::ProgressBar progress;
    const KLineConverter::Result result =
        KLineConverter(options.source, options.target).run([&progress](int done, int total, const QString &) {
            progress.show(done * 100 / total);
        });
    for (const QString &path : result.skipped)
        CliOutput::err(QStringLiteral("跳过 / skipped: %1\n").arg(path));
    if (!result.writeError.isEmpty()) {
        CliOutput::err(QStringLiteral("无法写入 / cannot write: %1\n").arg(result.writeError));
        return Unwritable;
    }
    if (result.converted == 0) {
        CliOutput::err(
            QStringLiteral("%1 中没有可转换的文件 / nothing to convert in %1\n").arg(options.source.dir));
        return NoData;
    }
    CliOutput::out(QStringLiteral("已转换 %1 个文件到 %2 / converted %1 files into %2\n")
                       .arg(result.converted)
                       .arg(options.target));
    return Ok;
}

} // namespace Commands
