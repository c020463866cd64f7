#pragma once

#include "StockIndicator.h"

#include <array>

// BOLL(20) of the close: value1 = mid, value2 = sigma, value3 = -sigma.
class BollIndicator : public StockIndicator {
public:
    void reset() override;
    IndicatorValue next(const Stock &bar) override;

private:
    static constexpr int kWindow = 20;
    std::array<float, kWindow> m_closes{}; // ring; the oldest sits at m_count % kWindow
    int m_count = 0;
};
