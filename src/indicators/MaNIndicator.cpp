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

void WindowAverageIndicator::averages(std::span<const float> values, int period, std::vector<float> &averages)
{
    averages.assign(values.size(), 0.0f);
    if (period <= 0 || values.size() < size_t(period))
        return;
    const size_t first = size_t(period) - 1;
    const size_t count = values.size() - first;
    float *out = averages.data() + first;
    const float divisor = float(period);
    // A block of windows is summed in registers, one value column at a time.
    constexpr size_t kBlock = 32;
    size_t start = 0;
    for (; start + kBlock <= count; start += kBlock) {
        float sums[kBlock] = {};
        for (size_t j = 0; j < size_t(period); ++j) {
            const float *column = values.data() + start + j;
            for (size_t i = 0; i < kBlock; ++i)
                sums[i] += column[i];
        }
        for (size_t i = 0; i < kBlock; ++i)
            out[start + i] = sums[i] / divisor;
    }
    for (; start < count; ++start) {
        float sum = 0.0f;
        for (size_t j = 0; j < size_t(period); ++j)
            sum += values[start + j];
        out[start] = sum / divisor;
    }
}
