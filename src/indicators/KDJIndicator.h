#pragma once

#include "StockIndicator.h"

#include <array>

// KDJ(9, 3, 3): value1 = k, value2 = d, value3 = j. k and d start from 0.
class KDJIndicator : public StockIndicator {
public:
    void reset() override;
    IndicatorValue next(const Stock &bar) override;

private:
    static constexpr int kWindow = 9;
    std::array<Stock, kWindow> m_window{}; // ring of the last bars
    int m_count = 0;
    float m_k = 0;
    float m_d = 0;
    float m_j = 0;
};
