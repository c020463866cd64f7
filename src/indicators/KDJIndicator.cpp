#include "KDJIndicator.h"

#include <cmath>

namespace {

// Not-a-number clamps to 0, as do the infinities' negative side.
float clampPercent(float value)
{
    if (std::isnan(value) || value < 0)
        return 0;
    return value > 100 ? 100 : value;
}

} // namespace

void KDJIndicator::reset() { *this = KDJIndicator(); }

IndicatorValue KDJIndicator::next(const Stock &bar)
{
    m_window[size_t(m_count % kWindow)] = bar;
    ++m_count;
    if (m_count < kWindow)
        return {};
    float lowest = 1000000.0f;
    float highest = 0;
    for (const Stock &b : m_window) {
        if (b.low < lowest)
            lowest = b.low;
        if (b.high > highest)
            highest = b.high;
    }
    const float rsv = (bar.close - lowest) / (highest - lowest) * 100;
    const float k = (2 * m_k + rsv) / 3;
    const float d = (2 * m_d + k) / 3;
    m_k = clampPercent(k);
    m_d = clampPercent(d);
    m_j = clampPercent(3 * m_k - 2 * m_d);
    IndicatorValue result;
    result.valid = true;
    result.value1 = m_k;
    result.value2 = m_d;
    result.value3 = m_j;
    return result;
}
