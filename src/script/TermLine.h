#pragma once

#include "market/Stock.h"

#include <QString>

#include <vector>

class IndicatorCache;

// The values of one script term ("ma,20,0", "macd.diff,0", "dmi.adx,14,6,0")
// on every bar of a stock, from the term's own evaluator, so that what is
// drawn is what a run reads. NaN where the term has no value; empty when
// the term does not compile. Terms bound with one cache share indicators.
std::vector<double> termLine(const QString &term, StockBars bars, IndicatorCache &cache);
