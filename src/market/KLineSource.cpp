#include "KLineSource.h"

#include "StockCode.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace {

struct CodeFile {
    QString code;
    QString market;
    QString path;
};

QFileInfoList filesIn(const QString &dir, const QStringList &patterns)
{
    return QDir(dir).entryInfoList(patterns, QDir::Files | QDir::NoSymLinks, QDir::Name | QDir::IgnoreCase);
}

// The terminal's day folders below `dir` ("sh/lday", "vipdoc/sz/lday"…) and
// `dir` itself.
QStringList dayFolders(const QString &dir)
{
    QStringList folders;
    for (const char *root : {"", "vipdoc/"})
        for (const char *market : {"sh", "sz", "bj"}) {
            const QString folder =
                QStringLiteral("%1/%2%3/lday").arg(dir, QLatin1String(root), QLatin1String(market));
            if (QFileInfo(folder).isDir())
                folders.append(folder);
        }
    folders.append(dir);
    return folders;
}

const QStringList kDayPattern{QStringLiteral("*.day")};
const QStringList kCsvPatterns{QStringLiteral("*.csv"), QStringLiteral("*.txt")};

QList<CodeFile> codeFiles(const QStringList &folders, const QStringList &patterns)
{
    QList<CodeFile> files;
    for (const QString &folder : folders)
        for (const QFileInfo &entry : filesIn(folder, patterns)) {
            const QString code = StockCode::fromFileName(entry.fileName());
            if (!code.isEmpty())
                files.append({code, StockCode::marketOf(entry.absoluteFilePath()), entry.absoluteFilePath()});
        }
    return files;
}

// One file per code, ordered by code. A code found more than once (an index
// "sh000001" beside the stock "sz000001") is taken where it is an A-share
// stock, else (reading every code) from the first market; with every code
// read, the others are skipped with a log line.
StockFileList selectCodes(QList<CodeFile> files, bool allCodes)
{
    std::stable_sort(files.begin(), files.end(),
                     [](const CodeFile &a, const CodeFile &b) { return a.code < b.code; });
    StockFileList list;
    for (qsizetype first = 0; first < files.size();) {
        qsizetype end = first;
        qsizetype chosen = -1;
        for (; end < files.size() && files[end].code == files[first].code; ++end)
            if (chosen < 0 && StockCode::isAShareStock(files[end].market, files[end].code))
                chosen = end;
        if (chosen < 0 && allCodes)
            chosen = first;
        for (qsizetype i = first; i < end; ++i) {
            if (i == chosen)
                list.append(files[i].path);
            else if (chosen >= 0 && allCodes)
                qDebug().noquote() << "skipped" << files[i].path << "- code" << files[i].code
                                   << "is read from" << files[chosen].path;
        }
        first = end;
    }
    return list;
}

} // namespace

KLineFormat KLineSource::kind() const
{
    if (format == QLatin1String("default"))
        return KLineFormat::Default;
    if (format == QLatin1String("tdx"))
        return KLineFormat::Tdx;
    if (format == QLatin1String("csv"))
        return KLineFormat::Csv;
    if (format == QLatin1String("auto"))
        return KLineFormat::Auto;
    return KLineFormat::Unknown;
}

KLineFormat KLineSource::resolvedKind() const
{
    const KLineFormat given = kind();
    if (given != KLineFormat::Auto)
        return given;
    if (dayFolders(dir).size() > 1 || !filesIn(dir, kDayPattern).isEmpty())
        return KLineFormat::Tdx;
    // A stray "readme.txt" beside the program's own files does not make a
    // CSV folder: it takes more code-named CSV files than files without a dot.
    const qsizetype csvFiles = codeFiles({dir}, kCsvPatterns).size();
    const qsizetype bareFiles = QDir(dir).entryList({QStringLiteral("*")}, QDir::Files).size() -
                                QDir(dir).entryList({QStringLiteral("*.*")}, QDir::Files).size();
    return csvFiles > bareFiles ? KLineFormat::Csv : KLineFormat::Default;
}

StockFileList KLineSource::list() const
{
    const bool allCodes = stocks == QLatin1String("all");
    switch (resolvedKind()) {
    case KLineFormat::Tdx: return selectCodes(codeFiles(dayFolders(dir), kDayPattern), allCodes);
    case KLineFormat::Csv: return selectCodes(codeFiles({dir}, kCsvPatterns), allCodes);
    default: return listStockFiles(dir);
    }
}

KLineFormat KLineSource::kindOf(const QString &listedPath) const
{
    if (kind() != KLineFormat::Auto)
        return kind();
    const QString suffix = QFileInfo(listedPath).suffix().toLower();
    if (suffix == QLatin1String("day"))
        return KLineFormat::Tdx;
    if (suffix == QLatin1String("csv") || suffix == QLatin1String("txt"))
        return KLineFormat::Csv;
    return KLineFormat::Default;
}

QString KLineSource::codeOf(const QString &listedPath) const
{
    const KLineFormat format = kindOf(listedPath);
    if (format == KLineFormat::Default || format == KLineFormat::Unknown)
        return stockCodeOf(listedPath);
    return StockCode::fromFileName(listedPath.section(QLatin1Char('/'), -1));
}
