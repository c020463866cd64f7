#pragma once

#include <QString>
#include <QStringList>

// Codes as users give them to the downloader. A code becomes a file name in
// the data directory, so nothing but six digits is ever accepted.
namespace StockCodeList {

// Exactly six ASCII digits.
bool isStockCode(const QString &text);

// The words of a codes file: separated by white space, commas or semicolons.
QStringList split(const QString &text);

} // namespace StockCodeList
