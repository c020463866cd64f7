#pragma once

#include "StockIndicator.h"

#include <vector>

// BOLL(20) of the close: value1 = mid, value2 = sigma, value3 = -sigma.
class BollIndicator : public StockIndicator {
public:
    void reset() override;
    IndicatorValue next(const Stock &bar) override;

private:
    static constexpr size_t kWindow = 20;
    std::vector<float> m_closes; // every close of the pass; the window is its tail
};
