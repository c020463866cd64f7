#pragma once

#include "StockIndicator.h"

// Exponential average of the close, seeded with the close of the bar before
// the first valid one rather than with a simple average.
class EMAIndicator : public StockIndicator {
public:
    explicit EMAIndicator(int period) : m_period(period) {}
    void reset() override
    {
        m_count = 0;
        m_ema = 0;
    }
    IndicatorValue next(const Stock &bar) override;

private:
    int m_period;
    int m_count = 0; // bars seen, capped at the period: the window only counts
    float m_ema = 0;
};
