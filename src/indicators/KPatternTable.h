#pragma once

#include "market/Stock.h"

#include <QString>
#include <QStringList>

// A recognizer judges the bar at the end of the prefix it is given.
using KPatternRecognizer = bool (*)(StockBars prefix);

// The 34 candlestick patterns that `k.` terms name, "k." prefix included.
namespace KPatternTable {

// nullptr for an unknown name.
KPatternRecognizer find(const QString &name);

// The names in table order.
QStringList names();

// Derived quantities of one bar, shared with the tests.
bool isSolidBody(const Stock &bar);
float shadowRatio(const Stock &bar);

} // namespace KPatternTable
