#pragma once

#include "StockIndicator.h"

// MACD(12, 26, 9) of the close: value1 = bar, value2 = diff, value3 = dea.
class MacdIndicator : public StockIndicator {
public:
    void reset() override;
    IndicatorValue next(const Stock &bar) override;

private:
    int m_counter = -1;
    float m_ema12 = 0;
    float m_ema26 = 0;
    float m_diff = 0;
    float m_dea = 0;
    float m_bar = 0;
};
