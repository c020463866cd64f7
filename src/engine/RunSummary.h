#pragma once

#include "TradeBook.h"

// The figures shown after a run. Only ordinary sales count; pending buys and
// intraday take-profits appear in the rows alone.
struct RunSummary {
    int trades = 0;
    double averageHoldDays = 0;
    double successRate = 0;
    double averageGain = 0;
    qsizetype rows = 0; // every listed trade, counted or not

    static RunSummary fromBook(const TradeBook &book);

    // "买卖次数:…" with two decimals, or "无数据" when there are no rows.
    QString text() const;
};

// printf's "%.2f": ties of the binary value round to even, as users' earlier
// results were printed.
QString fixedTwoDecimals(double value);
