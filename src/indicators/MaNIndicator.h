#pragma once

#include "StockIndicator.h"

#include <span>
#include <vector>

// Simple average of one bar field over the last N bars. The window sum is
// formed anew for every bar, oldest first, in single precision: a running sum
// would round differently.
class WindowAverageIndicator : public StockIndicator {
public:
    explicit WindowAverageIndicator(int period) : m_period(period) {}
    void reset() override { m_values.clear(); }
    IndicatorValue next(const Stock &bar) override;

    // The same averages for a whole series at once: `averages[i]` belongs to
    // `values[i]` and is valid from index period - 1 on. Each window is still
    // summed oldest first; blocks of windows are summed side by side, which
    // the compiler turns into vector additions.
    static void averages(std::span<const float> values, int period, std::vector<float> &averages);

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
