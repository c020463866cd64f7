#pragma once

#include "market/Stock.h"

// The result of one indicator step. When not valid all four values are 0.
struct IndicatorValue {
    bool valid = false;
    float value1 = 0;
    float value2 = 0;
    float value3 = 0;
    float value4 = 0;
};

// A streaming indicator: fed every bar of one stock, oldest first, it answers
// for each bar. One object serves one pass; reset starts a new pass.
class StockIndicator {
public:
    virtual ~StockIndicator() = default;
    virtual void reset() = 0;
    virtual IndicatorValue next(const Stock &bar) = 0;
};
