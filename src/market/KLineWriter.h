#pragma once

#include "Stock.h"

#include <QByteArray>

// A day series as the program's own K-line text: one bracketed list of
// ["date","open","close","high","low","volume"] days. Every number is written
// with the fewest digits that read back as the same float, so a converted
// file gives exactly the series it was written from.
namespace KLineWriter {

QByteArray text(StockBars bars);

} // namespace KLineWriter
