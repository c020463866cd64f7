#include "BollIndicator.h"

#include <cmath>

void BollIndicator::reset() { *this = BollIndicator(); }

IndicatorValue BollIndicator::next(const Stock &bar)
{
    m_closes[size_t(m_count % kWindow)] = bar.close;
    ++m_count;
    if (m_count < kWindow)
        return {};
    const int oldest = m_count % kWindow;
    float sum = 0;
    for (int i = 0; i < kWindow; ++i)
        sum += m_closes[size_t((oldest + i) % kWindow)];
    const float mid = sum * 0.05f;
    float squares = 0;
    for (int i = 0; i < kWindow; ++i) {
        const float deviation = m_closes[size_t((oldest + i) % kWindow)] - mid;
        squares += deviation * deviation;
    }
    const float variance = float(squares * 0.05);
    const float sigma = std::sqrt(variance);
    IndicatorValue result;
    result.valid = true;
    result.value1 = mid;
    result.value2 = sigma;
    result.value3 = -sigma;
    return result;
}
