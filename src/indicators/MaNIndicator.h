#pragma once

#include "StockIndicator.h"

#include <vector>

// Simple average of one bar field over the last N bars. The window sum is
// formed anew for every bar, oldest first, in single precision: a running sum
// would round differently.
class WindowAverageIndicator : public StockIndicator {
public:
    explicit WindowAverageIndicator(int period) : m_period(period) {}
    void reset() override { m_values.clear(); }
    IndicatorValue next(const Stock &bar) override;

protected:
    virtual float fieldOf(const Stock &bar) const = 0;

private:
    int m_period;
    std::vector<float> m_values; // every value of the pass; the window is its tail
};

class MaNIndicator : public WindowAverageIndicator {
public:
    using WindowAverageIndicator::WindowAverageIndicator;

protected:
    float fieldOf(const Stock &bar) const override { return bar.close; }
};
