#pragma once

#include "Stock.h"

#include <string_view>

// Turns K-line text (a bracketed list of [date,open,close,high,low,volume]
// lists, values optionally quoted, anything around the list ignored) into
// `series.bars`. Never fails: what cannot be used is skipped. The code is left
// to the caller.
void parseKLineText(std::string_view text, StockSeries &series);

// The same for the text already in `series.text()`, which is rewritten in place.
void parseKLineText(StockSeries &series);
