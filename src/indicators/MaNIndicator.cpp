#include "MaNIndicator.h"

IndicatorValue WindowAverageIndicator::next(const Stock &bar)
{
    m_values.push_back(fieldOf(bar));
    if (m_period <= 0 || m_values.size() < size_t(m_period))
        return {};
    const float *window = m_values.data() + (m_values.size() - size_t(m_period));
    float sum = 0;
    for (int i = 0; i < m_period; ++i)
        sum += window[i];
    IndicatorValue result;
    result.valid = true;
    result.value1 = sum / float(m_period);
    return result;
}
