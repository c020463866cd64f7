#include "EMAIndicator.h"

IndicatorValue EMAIndicator::next(const Stock &bar)
{
    if (m_period <= 0)
        return {};
    if (m_count < m_period)
        ++m_count;
    if (m_count < m_period) {
        m_ema = bar.close;
        return {};
    }
    const float alpha = 2.0f / float(m_period + 1);
    m_ema = (1 - alpha) * m_ema + alpha * bar.close;
    IndicatorValue result;
    result.valid = true;
    result.value1 = m_ema;
    return result;
}
