#include "BollIndicator.h"

#include <cmath>

void BollIndicator::reset() { m_closes.clear(); }

IndicatorValue BollIndicator::next(const Stock &bar)
{
    m_closes.push_back(bar.close);
    if (m_closes.size() < kWindow)
        return {};
    const float *window = m_closes.data() + (m_closes.size() - kWindow);
    float sum = 0;
    for (size_t i = 0; i < kWindow; ++i)
        sum += window[i];
    const float mid = sum * 0.05f;
    float squares = 0;
    for (size_t i = 0; i < kWindow; ++i) {
        const float deviation = window[i] - mid;
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
