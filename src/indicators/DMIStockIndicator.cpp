#include "DMIStockIndicator.h"

#include <algorithm>
#include <cmath>

void DMIStockIndicator::reset()
{
    m_bars.clear();
    m_dx.clear();
    m_adx.clear();
}

IndicatorValue DMIStockIndicator::next(const Stock &bar)
{
    m_bars.push_back(bar);
    if (m_windowLength < 2 || m_bars.size() < size_t(m_windowLength))
        return {};
    const Stock *window = m_bars.data() + (m_bars.size() - size_t(m_windowLength));
    float plusSum = 0, minusSum = 0, rangeSum = 0;
    for (int i = 1; i < m_windowLength; ++i) {
        const Stock &today = window[i];
        const Stock &before = window[i - 1];
        const float up = today.high - before.high;
        const float down = before.low - today.low;
        if (up > down && up > 0)
            plusSum += up;
        if (down > up && down > 0)
            minusSum += down;
        rangeSum += std::max({std::fabs(today.high - today.low), std::fabs(today.high - before.close),
                              std::fabs(today.low - before.close)});
    }
    const float pdi = plusSum * 100 / rangeSum;
    const float mdi = minusSum * 100 / rangeSum;
    const float dx = 100 * std::fabs(pdi - mdi) / (pdi + mdi);

    m_dx.push_back(dx);
    if (m_dx.size() > size_t(m_m))
        m_dx.pop_front();
    double dxSum = 0;
    for (const double value : m_dx)
        dxSum += value;
    const double adx = dxSum / double(m_dx.size());

    m_adx.push_back(adx);
    double earlierAdx = 0;
    if (m_adx.size() > size_t(m_m)) {
        earlierAdx = m_adx.front();
        m_adx.pop_front();
    }
    IndicatorValue result;
    result.valid = true;
    result.value1 = pdi;
    result.value2 = mdi;
    result.value3 = float(adx);
    result.value4 = float((adx + earlierAdx) * 0.5);
    return result;
}
