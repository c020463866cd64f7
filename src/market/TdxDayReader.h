#pragma once

#include "Stock.h"

#include <QString>

#include <string_view>

// A stock terminal's daily file: 32-byte little-endian records of date
// (yyyymmdd), open, high, low and close as integers in 0.01 or 0.001 元, the
// turnover as a float, the volume as an integer and 4 reserved bytes.
// Prices become the floats their decimals give as text, dates "yyyy-MM-dd"
// text, so every later step sees what a text file of the same days gives.
class TdxDayReader {
public:
    static constexpr size_t kRecordSize = 32;

    // Fills `series.bars` (the code is left to the caller). A file whose size
    // is not a whole number of records is not read; days with an impossible
    // date or a price of 0 or less are skipped. Returns what was wrong, or an
    // empty text.
    static QString read(std::string_view bytes, int priceDecimals, StockSeries &series);
};
