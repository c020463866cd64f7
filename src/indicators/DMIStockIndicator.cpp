#include "DMIStockIndicator.h"

#include <algorithm>
#include <cmath>

void DMIStockIndicator::reset()
{
    m_hasPrevious = false;
    m_plus.clear();
    m_minus.clear();
    m_range.clear();
    m_dx.clear();
    m_adx.clear();
}

template <typename T>
T DMIStockIndicator::tailSum(const std::vector<T> &history, size_t count)
{
    T sum = 0;
    for (size_t i = history.size() - count; i < history.size(); ++i)
        sum += history[i];
    return sum;
}

IndicatorValue DMIStockIndicator::next(const Stock &bar)
{
    if (m_hasPrevious) {
        const Stock &before = m_previous;
        const float up = bar.high - before.high;
        const float down = before.low - bar.low;
        // Adding +0 leaves these sums unchanged: they start at +0 and only grow.
        m_plus.push_back(up > down && up > 0 ? up : 0.0f);
        m_minus.push_back(down > up && down > 0 ? down : 0.0f);
        m_range.push_back(std::max({std::fabs(bar.high - bar.low), std::fabs(bar.high - before.close),
                                    std::fabs(bar.low - before.close)}));
    }
    m_previous = bar;
    m_hasPrevious = true;
    if (m_steps < 1 || m_plus.size() < size_t(m_steps))
        return {};

    const float plusSum = tailSum(m_plus, size_t(m_steps));
    const float minusSum = tailSum(m_minus, size_t(m_steps));
    const float rangeSum = tailSum(m_range, size_t(m_steps));
    const float pdi = plusSum * 100 / rangeSum;
    const float mdi = minusSum * 100 / rangeSum;
    const float dx = 100 * std::fabs(pdi - mdi) / (pdi + mdi);

    m_dx.push_back(dx);
    const size_t averaged = std::min(m_dx.size(), size_t(m_m));
    const double adx = tailSum(m_dx, averaged) / double(averaged);
    m_adx.push_back(adx);
    // The ADX of M bars before, once there is one.
    const double earlierAdx = m_adx.size() > size_t(m_m) ? m_adx[m_adx.size() - 1 - size_t(m_m)] : 0.0;

    IndicatorValue result;
    result.valid = true;
    result.value1 = pdi;
    result.value2 = mdi;
    result.value3 = float(adx);
    result.value4 = float((adx + earlierAdx) * 0.5);
    return result;
}
