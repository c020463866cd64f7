#include "CliOutput.h"
#include "Commands.h"
#include "market/KLineCheck.h"
#include "market/TextFile.h"
#include "script/StrategyConfig.h"

#include <QDir>

namespace {

// Everything in the folder a run might read or silently pass over: links,
// FIFOs and devices included, sub-folders and hidden files not.
QFileInfoList folderEntries(const QString &dir)
{
    return QDir(dir).entryInfoList(QDir::Files | QDir::System, QDir::Name | QDir::IgnoreCase);
}

struct CheckTotals {
    int files = 0;
    int withProblems = 0;
    int hints = 0;
};

void checkOneFile(const QFileInfo &entry, StockSeries &series, CheckTotals &totals)
{
    ++totals.files;
    const QString name = entry.fileName();
    const StockSkip skip = TextFile::readStockFile(entry.absoluteFilePath(), series.text());
    if (skip != StockSkip::None) {
        ++totals.withProblems;
        CliOutput::out(QStringLiteral("%1: %2\n").arg(name, stockSkipText(skip)));
        return;
    }
    const KLineCheck check = checkKLineText(series);
    totals.withProblems += !check.problems.empty();
    for (const KLineFinding &finding : check.problems) {
        QString line = QStringLiteral("%1: %2").arg(name, problemText(finding.problem));
        if (!finding.firstDate.isNull())
            line +=
                QStringLiteral(" (%1 处, 首次 / %1×, first %2)").arg(finding.count).arg(finding.firstDate);
        CliOutput::out(line + QLatin1Char('\n'));
    }
    for (const KLineJump &jump : check.jumps) {
        CliOutput::out(QStringLiteral("提示 %1: %2 收盘价变动 / close moved %3%\n")
                           .arg(name, jump.date, QString::asprintf("%+.1f", jump.percent)));
    }
    totals.hints += int(check.jumps.size());
}

} // namespace

namespace Commands {

// The data doctor: lists what would make a run read a file wrongly or skip it.
int check(const QStringList &arguments)
{
    if (arguments.size() > 2 || arguments.contains(QStringLiteral("--help"))) {
        return refuseOptions(QStringLiteral("用法 / usage: orvel-cli check [DIR]\n"
                                            "DIR defaults to config.source.k.dir of config.conf."),
                             arguments);
    }
    QString dir = arguments.value(1);
    if (dir.isEmpty()) {
        StrategyConfig config;
        config.loadConfigFile();
        dir = config.kDir;
    }
    if (!QDir(dir).exists()) {
        CliOutput::err(QStringLiteral("警告: 文件夹%1不存在或其中缺少股票文件\n").arg(dir));
        return NoData;
    }
    CheckTotals totals;
    StockSeries series;
    for (const QFileInfo &entry : folderEntries(dir))
        checkOneFile(entry, series, totals);
    CliOutput::out(
        QStringLiteral("共 %1 个文件, %2 个有问题, %3 条提示 / %1 files, %2 with problems, %3 hints\n")
            .arg(totals.files)
            .arg(totals.withProblems)
            .arg(totals.hints));
    return totals.withProblems > 0 ? DataProblems : Ok;
}

} // namespace Commands
