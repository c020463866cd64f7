#include "CliOutput.h"
#include "Commands.h"
#include "app/MessageLog.h"

#include <QCoreApplication>

namespace {

const char kUsage[] = "用法 / usage:\n"
                      "  orvel-cli backtest SCRIPT [--data DIR] [--out FILE] [--config FILE] [--jobs N]"
                      " [--encoding gbk|utf-8]\n"
                      "  orvel-cli eval KLINEFILE TERM [TERM...]\n"
                      "  orvel-cli download CODE... [--codes-file FILE] [--data DIR] [--adjust hfq|qfq|bfq]"
                      " [--period day|week|month] [--host URL]\n"
                      "  orvel-cli check [DIR]\n"
                      "Run a command with --help for its options.\n";

} // namespace

int Commands::refuseOptions(const QString &problem, const QStringList &arguments)
{
    CliOutput::err(problem + QLatin1Char('\n'));
    return arguments.contains(QStringLiteral("--help")) ? Ok : UsageError;
}

int main(int argc, char *argv[])
{
    MessageLog::install();
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("orvel-cli"));
    QCoreApplication::setApplicationVersion(QStringLiteral(ORVEL_VERSION));

    QStringList arguments = QCoreApplication::arguments();
    const QString command = arguments.size() > 1 ? arguments.takeAt(1) : QString();
    if (command == QLatin1String("backtest"))
        return Commands::backtest(arguments);
    if (command == QLatin1String("eval"))
        return Commands::eval(arguments);
    if (command == QLatin1String("download"))
        return Commands::download(arguments);
    if (command == QLatin1String("check"))
        return Commands::check(arguments);
    CliOutput::err(QString::fromUtf8(kUsage));
    return command == QLatin1String("--help") || command == QLatin1String("-h") ? Commands::Ok
                                                                                : Commands::UsageError;
}
