#include "MacdIndicator.h"

void MacdIndicator::reset() { *this = MacdIndicator(); }

IndicatorValue MacdIndicator::next(const Stock &bar)
{
    ++m_counter;
    if (m_counter == 0) {
        m_ema12 = m_ema26 = bar.close;
        return {};
    }
    m_ema12 = m_ema12 + (bar.close - m_ema12) * 2 / 13;
    m_ema26 = m_ema26 + (bar.close - m_ema26) * 2 / 27;
    m_diff = m_ema12 - m_ema26;
    // The signal line is weighed in double and stored back in single precision.
    m_dea = m_counter == 1 ? float(0.2 * m_diff) : float(0.2 * m_diff + 0.8 * m_dea);
    m_bar = 2 * (m_diff - m_dea);
    IndicatorValue result;
    result.valid = true;
    result.value1 = m_bar;
    result.value2 = m_diff;
    result.value3 = m_dea;
    return result;
}
