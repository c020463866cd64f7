#include "ReportFiles.h"

#include "ReportJson.h"
#include "market/TextFile.h"

#include <QDir>
#include <QFileInfo>

namespace {

QString writeFile(const QString &path, const QByteArray &bytes)
{
    // Replacing through a temporary would turn a device or a folder of that
    // name into a file: only a regular file or nothing may be there.
    const QFileInfo target(path);
    if (target.exists() && !target.isFile())
        return QStringLiteral("%1: 不是普通文件 / not a regular file").arg(path);
    const QString error = TextFile::writeAtomically(path, bytes);
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
