#pragma once

#include "TradeBook.h"
#include "market/TextFile.h"

#include <QByteArray>

// The trades as "output.csv" lines: code, buy date, buy price, sale date,
// sale price, days held, status; no header, "\n" line ends.
QByteArray outputCsvBytes(const TradeBook &book, TextEncoding encoding);
QString outputCsvText(const TradeBook &book);

// Writes the file through a temporary beside it; an error text, or empty.
QString writeOutputCsv(const QString &path, const TradeBook &book, TextEncoding encoding);

// printf's "%g": six significant digits, the shorter of fixed or scientific.
QString shortReal(double value);
