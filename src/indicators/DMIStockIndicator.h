#pragma once

#include "StockIndicator.h"

#include <vector>

// DMI over N steps with an M-value ADX average: value1 = PDI, value2 = MDI,
// value3 = ADX, value4 = ADXR. The direction sums are plain sums, not smoothed.
class DMIStockIndicator : public StockIndicator {
public:
    DMIStockIndicator(int n, int m) : m_steps(n), m_m(m) {}
    void reset() override;
    IndicatorValue next(const Stock &bar) override;

private:
    // The last `count` values of `history`, summed oldest first.
    template <typename T>
    static T tailSum(const std::vector<T> &history, size_t count);

    int m_steps;
    int m_m;
    Stock m_previous;
    bool m_hasPrevious = false;
    // One entry per step from bar to bar; a window is their tail. Each step's
    // contributions are worked out once, the sums formed anew as the rule
    // says, so results equal summing the window bar by bar.
    std::vector<float> m_plus;
    std::vector<float> m_minus;
    std::vector<float> m_range;
    std::vector<double> m_dx;
    std::vector<double> m_adx;
};
