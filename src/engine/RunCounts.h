#pragma once

#include "market/StockSkip.h"

// What a run met on its way: how the listed files were read and what became
// of the buy signals. Nothing reads them to trade; they tell the user why a
// run gave what it gave.
struct RunCounts {
    StockSkipCounts files;
    int buySignals = 0; // days with a buy signal and no position held
    int outsideGap = 0; // of those, not bought: the next open's gap was out of the allowed range

    RunCounts &operator+=(const RunCounts &other)
    {
        files += other.files;
        buySignals += other.buySignals;
        outsideGap += other.outsideGap;
        return *this;
    }
};
