#include "CliOutput.h"
#include "Commands.h"
#include "DownloadPlugin.h"
#include "OutOfMemory.h"
#include "ReportChartsPlugin.h"
#include "runtime/MessageLog.h"

#include <QCoreApplication>

#include <memory>

namespace {

const char kUsage[] = "用法 / usage:\n"
                      "  orvel-cli backtest SCRIPT [--data DIR] [--out FILE] [--config FILE] [--jobs N]"
                      " [--encoding gbk|utf-8] [--report DIR]\n"
                      "  orvel-cli screen SCRIPT [--data DIR] [--config FILE] [--date YYYY-MM-DD]\n"
                      "  orvel-cli eval KLINEFILE TERM [TERM...]\n"
                      "  orvel-cli download CODE... [--codes-file FILE] [--data DIR] [--adjust hfq|qfq|bfq]"
                      " [--period day|week|month] [--host URL]\n"
                      "  orvel-cli check [DIR]\n"
                      "  orvel-cli convert --from tdx|csv SRC --data DIR [--stocks only|all]\n"
                      "  orvel-cli sweep SCRIPT --vary NAME=FROM:TO[:STEP]|NAME=a,b,c... [--data DIR]"
                      " [--config FILE] [--jobs N] [--sort KEY] [--top K] [--out FILE] [--shard I/N]"
                      " [--force]\n"
                      "  orvel-cli sweep-merge FILE... [--out FILE] [--sort KEY] [--top K]\n"
                      "Run a command with --help for its options.\n";

// Only a backtest that writes a report draws charts.
bool wantsCharts(int argc, char **argv)
{
    for (int i = 2; argc > 1 && qstrcmp(argv[1], "backtest") == 0 && i < argc; ++i) {
        if (qstrcmp(argv[i], "--report") == 0 || QByteArray(argv[i]).startsWith("--report="))
            return true;
    }
    return false;
}

} // namespace

int main(int argc, char *argv[])
{
    OutOfMemory::install();
    MessageLog::install();
    const std::unique_ptr<QCoreApplication> app =
        ReportChartsPlugin::makeApplication(argc, argv, wantsCharts(argc, argv));
    QCoreApplication::setApplicationName(QStringLiteral("orvel-cli"));
    QCoreApplication::setApplicationVersion(QStringLiteral(ORVEL_VERSION));

    QStringList arguments = QCoreApplication::arguments();
    const QString command = arguments.size() > 1 ? arguments.takeAt(1) : QString();
    if (command == QLatin1String("backtest"))
        return Commands::backtest(arguments);
    if (command == QLatin1String("screen"))
        return Commands::screen(arguments);
    if (command == QLatin1String("eval"))
        return Commands::eval(arguments);
    if (command == QLatin1String("download"))
        return DownloadPlugin::download(arguments);
    if (command == QLatin1String("check"))
        return Commands::check(arguments);
    if (command == QLatin1String("convert"))
        return Commands::convert(arguments);
    if (command == QLatin1String("sweep"))
        return Commands::sweep(arguments);
    if (command == QLatin1String("sweep-merge"))
        return Commands::sweepMerge(arguments);
    CliOutput::err(QString::fromUtf8(kUsage));
    return command == QLatin1String("--help") || command == QLatin1String("-h") ? Commands::Ok
                                                                                : Commands::UsageError;
}
