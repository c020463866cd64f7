#include "ReportFiles.h"

#include "ReportJson.h"
#include "market/SafeFile.h"

#include <QDir>

namespace {

QString writeFile(const QString &path, const QByteArray &bytes)
{
    const QString error = SafeFile::replace(path, bytes, SymlinkRule::FollowToRegularFile);
    return error.isEmpty() ? error : QStringLiteral("%1: %2").arg(path, error);
}

} // namespace

QString writeReportFiles(const QString &dir, const StrategyReport &report, const ReportCharts &charts)
{
    if (!QDir().mkpath(dir))
        return QStringLiteral("%1: 无法创建文件夹 / cannot make the folder").arg(dir);
    const QDir folder(dir);
    QString error = writeFile(folder.filePath(QStringLiteral("report.json")), reportJson(report));
    if (error.isEmpty())
        error = writeFile(folder.filePath(QStringLiteral("equity.csv")), equityCsv(report));
    if (error.isEmpty())
        error =
            writeFile(folder.filePath(QStringLiteral("report.html")), reportHtml(report, charts).toUtf8());
    return error;
}
