#pragma once

#include "StockIndicator.h"

#include <deque>
#include <vector>

// DMI over N steps with an M-value ADX average: value1 = PDI, value2 = MDI,
// value3 = ADX, value4 = ADXR. The direction sums are plain sums, not smoothed.
class DMIStockIndicator : public StockIndicator {
public:
    DMIStockIndicator(int n, int m) : m_windowLength(n + 1), m_m(m) {}
    void reset() override;
    IndicatorValue next(const Stock &bar) override;

private:
    int m_windowLength;
    int m_m;
    std::vector<Stock> m_bars; // every bar of the pass; the window is its tail
    std::deque<double> m_dx;
    std::deque<double> m_adx;
};
