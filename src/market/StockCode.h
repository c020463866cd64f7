#pragma once

#include <QString>

// What a data file's name tells about the stock in it: the six-digit code
// ("sh600000.day", "600000.csv", "SH#600000.txt", "600000.SH.csv") and, where
// the name or its folder carries one, the market ("sh", "sz" or "bj").
namespace StockCode {

// The first run of exactly six digits in the file name, or an empty text.
QString fromFileName(const QString &fileName);

// "sh", "sz" or "bj" from the name's leading letters ("sh600000.day",
// "SH#600000.txt") or trailing ones ("600000.SH.csv"), else from the folder
// above a terminal's "lday" folder; empty when neither says.
QString marketOf(const QString &path);

// A-share stocks, not indexes, funds or B shares. Without a market, a code
// that is a stock in any market counts.
bool isAShareStock(const QString &market, const QString &code);

// Digits after the point in a terminal's binary prices: funds and ETFs are
// kept in 0.001 元, everything else in 0.01 元.
int priceDecimals(const QString &market, const QString &code);

} // namespace StockCode
