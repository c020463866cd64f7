#pragma once

#include "Stock.h"

#include <QString>
#include <QStringList>

#include <string_view>

// One stock's days from a spreadsheet or data-service export: a header naming
// the columns in any order, in English or Chinese; comma, semicolon or tab
// separated; UTF-8 or GBK; dates as 2021-01-04, 20210104 or 2021/1/4. Days
// come out oldest first with "yyyy-MM-dd" dates, numbers read as the text
// format reads them; other columns are ignored.
class CsvKLineReader {
public:
    // Fills `series.bars` (the code is left to the caller). Returns what was
    // wrong (a missing column, skipped rows), or an empty text.
    static QString read(std::string_view bytes, StockSeries &series);

    // The date as "yyyy-MM-dd", or an empty text when it is not a date.
    static QString normalDate(QStringView text);
};
