#include "StockFileList.h"

#include <QDir>

StockFileList listStockFiles(const QString &dir)
{
    const QDir directory(dir);
    if (!directory.exists())
        return {};
    StockFileList files;
    const QFileInfoList entries =
        directory.entryInfoList(QDir::Files | QDir::NoSymLinks, QDir::Name | QDir::IgnoreCase);
    files.reserve(entries.size());
    for (const QFileInfo &entry : entries)
        files.append(entry.absoluteFilePath());
    return files;
}

QString stockCodeOf(const QString &absolutePath)
{
    if (absolutePath.size() < 7)
        return {};
    return absolutePath.right(6);
}
