#include "CliOutput.h"
#include "Commands.h"
#include "market/TextFile.h"
#include "quotes/KLineDownloader.h"
#include "quotes/StockCodeList.h"
#include "quotes/StockQQHistoryInterface.h"
#include "script/StrategyConfig.h"

#include <QCommandLineParser>
#include <QEventLoop>

namespace {

struct DownloadRequest {
    QStringList codes;
    KLineDownloader::Options options;
};

// The codes named on the command line and in the codes file, or an error text.
QString readCodes(const QCommandLineParser &parser, const QString &codesFile, QStringList &codes)
{
    codes = parser.positionalArguments();
    if (!codesFile.isEmpty()) {
        ByteBuffer bytes;
        if (!TextFile::readBytes(codesFile, bytes))
            return QStringLiteral("无法读取代码文件 / cannot read codes file: %1").arg(codesFile);
        codes += StockCodeList::split(TextFile::decode(QByteArray(bytes.data(), qsizetype(bytes.size()))));
    }
    if (codes.isEmpty())
        return QStringLiteral("需要至少一个股票代码 / expected at least one CODE\n") + parser.helpText();
    return {};
}

// The request, or an error text.
QString readOptions(const QStringList &arguments, DownloadRequest &request)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Downloads the history K-lines of each CODE (six digits) into the data directory."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("CODE"), QStringLiteral("stock codes"),
                                 QStringLiteral("CODE…"));
    const QCommandLineOption codesFile(QStringLiteral("codes-file"),
                                       QStringLiteral("file of codes separated by spaces, commas or lines"),
                                       QStringLiteral("FILE"));
    const QCommandLineOption data(QStringLiteral("data"),
                                  QStringLiteral("K-line directory (default: config.source.k.dir)"),
                                  QStringLiteral("DIR"));
    const QCommandLineOption adjust(QStringLiteral("adjust"),
                                    QStringLiteral("price adjustment: hfq (default), qfq or bfq"),
                                    QStringLiteral("KIND"), QStringLiteral("hfq"));
    const QCommandLineOption period(QStringLiteral("period"),
                                    QStringLiteral("bar period: day (default), week or month"),
                                    QStringLiteral("PERIOD"), QStringLiteral("day"));
    const QCommandLineOption host(
        QStringLiteral("host"),
        QStringLiteral("quote service, scheme and host (default: $ORVEL_QUOTE_HOST or "
                       "the public service)"),
        QStringLiteral("URL"));
    parser.addOptions({codesFile, data, adjust, period, host});
    if (QString problem = Commands::parse(parser, arguments); !problem.isEmpty())
        return problem;

    KLineDownloader::Options &options = request.options;
    options.adjustment = parser.value(adjust);
    if (!StockQQHistoryInterface::isAdjustment(options.adjustment))
        return QStringLiteral("--adjust 只能是 hfq、qfq 或 bfq / --adjust must be hfq, qfq or bfq");
    options.period = parser.value(period);
    if (!StockQQHistoryInterface::isPeriod(options.period))
        return QStringLiteral("--period 只能是 day、week 或 month / --period must be day, week or month");
    options.host = parser.value(host);
    if (parser.isSet(data)) {
        options.dataDir = parser.value(data);
    } else {
        StrategyConfig config;
        config.loadConfigFile();
        options.dataDir = config.kDir;
    }
    return readCodes(parser, parser.value(codesFile), request.codes);
}

// One line per code: "[2/5] 600000 …" when its request starts, completed
// with the outcome when the reply is in.
void reportProgress(KLineDownloader &downloader)
{
    QObject::connect(&downloader, &KLineDownloader::codeStarted,
                     [](int position, int count, const QString &code) {
                         CliOutput::out(QStringLiteral("[%1/%2] %3 … ").arg(position).arg(count).arg(code));
                     });
    QObject::connect(&downloader, &KLineDownloader::codeSaved, [](const QString &, int bars) {
        CliOutput::out(QStringLiteral("已保存 / saved (%1 条 / bars)\n").arg(bars));
    });
    QObject::connect(&downloader, &KLineDownloader::codeFailed, [](const QString &, const QString &reason) {
        CliOutput::out(QStringLiteral("失败 / failed: %1\n").arg(reason));
    });
    QObject::connect(&downloader, &KLineDownloader::codeRefused, [](const QString &text) {
        CliOutput::err(
            QStringLiteral("代码无效, 须为六位数字 / invalid code, six digits expected: \"%1\"\n").arg(text));
    });
}

int run(const DownloadRequest &request)
{
    KLineDownloader downloader;
    reportProgress(downloader);
    QEventLoop loop;
    int saved = 0;
    int failed = 0;
    QObject::connect(&downloader, &KLineDownloader::finished, [&](int savedCodes, int failedCodes) {
        saved = savedCodes;
        failed = failedCodes;
        loop.quit();
    });
    const QString problem = downloader.start(request.codes, request.options);
    if (!problem.isEmpty()) {
        CliOutput::err(problem + QLatin1Char('\n'));
        return Commands::Unwritable;
    }
    if (downloader.isRunning())
        loop.exec();
    CliOutput::out(QStringLiteral("完成 / done: %1 个已保存 / saved, %2 个失败 / failed (%3)\n")
                       .arg(saved)
                       .arg(failed)
                       .arg(request.options.dataDir));
    // A reply we could not write means the data directory needs the user's
    // attention more than a code the service did not give.
    if (downloader.unwritten() > 0)
        return Commands::Unwritable;
    return failed == 0 ? Commands::Ok : Commands::DownloadFailed;
}

} // namespace

namespace Commands {

int download(const QStringList &arguments)
{
    DownloadRequest request;
    const QString problem = readOptions(arguments, request);
    if (!problem.isEmpty())
        return refuseOptions(problem, arguments);
    return run(request);
}

} // namespace Commands

// What orvel-cli calls when it loads this command from its plugin.
extern "C" Q_DECL_EXPORT int orvelDownload(const QStringList *arguments)
{
    return Commands::download(*arguments);
}
