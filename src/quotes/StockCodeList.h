#pragma once

#include <QString>
#include <QStringList>

// Codes as users give them to the downloader. A code becomes a file name in
// the data directory, so nothing but six digits is ever accepted.
namespace StockCodeList {

// Exactly six ASCII digits.
bool isStockCode(const QString &text);

// The six digits of a code written with its market, as quote sites show
// them: "sh600000", "SZ000001", "600000.SH", "000001.sz"; anything else as it
// stands. The market written is not kept: the request names it from the code.
QString bareCode(const QString &text);

// The words of a codes file: separated by white space, commas or semicolons.
QStringList split(const QString &text);

} // namespace StockCodeList
