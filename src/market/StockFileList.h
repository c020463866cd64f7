#pragma once

#include <QString>
#include <QStringList>

// The data directory's regular files (no links, no hidden files, no
// sub-directories) as absolute paths, ordered by name ignoring case.
using StockFileList = QStringList;

// Empty when the directory does not exist.
StockFileList listStockFiles(const QString &dir);

// The code of a listed file: the last six characters of its absolute path,
// or an empty text when the path is shorter than seven characters.
QString stockCodeOf(const QString &absolutePath);
