#include "CliOutput.h"
#include "Commands.h"
#include "ScriptRun.h"

#include <QCommandLineParser>
#include <QDate>

namespace {

struct ScreenOptions {
    QString script;
    QString data;
    QString config;
    QString date; // empty: the data as it is
};

// The options, or an error text.
QString readOptions(const QStringList &arguments, ScreenOptions &options)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Lists the stocks whose buy lines hold on the latest day of the data directory."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("SCRIPT"), QStringLiteral("the strategy script"));
    const QCommandLineOption data(QStringLiteral("data"), QStringLiteral("K-line directory"),
                                  QStringLiteral("DIR"));
    const QCommandLineOption config(QStringLiteral("config"), QStringLiteral("configuration file"),
                                    QStringLiteral("FILE"));
    const QCommandLineOption date(QStringLiteral("date"),
                                  QStringLiteral("screen as if the data ended on this day"),
                                  QStringLiteral("YYYY-MM-DD"));
    parser.addOptions({data, config, date});
    if (QString problem = Commands::parseScript(parser, arguments, options.script); !problem.isEmpty())
        return problem;
    options.data = parser.value(data);
    options.config = parser.value(config);
    options.date = parser.value(date);
    if (parser.isSet(date) && !QDate::fromString(options.date, QStringLiteral("yyyy-MM-dd")).isValid())
        return QStringLiteral("--date 需要 YYYY-MM-DD 格式的日期 / --date needs a date as YYYY-MM-DD");
    return {};
}

} // namespace

namespace Commands {

// One line per pick: the code and the day it signals on.
int screen(const QStringList &arguments)
{
    ScreenOptions options;
    const QString problem = readOptions(arguments, options);
    if (!problem.isEmpty())
        return refuseOptions(problem, arguments);
    std::unique_ptr<BacktestRun> run;
    if (const int opened = openScriptRun(options.script, options.config, options.data, run); opened != Ok)
        return opened;
    CliOutput::ProgressBar progress;
    run->setProgress([&progress](int percent, const QString &) { progress.show(percent); });
    run->setLastDate(options.date);
    QString text;
    for (const StockPick &pick : run->screen())
        text += pick.code + QLatin1Char('\t') + pick.date + QLatin1Char('\n');
    CliOutput::out(text);
    return Ok;
}

} // namespace Commands
