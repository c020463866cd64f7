#include "IndicatorEvaluator.h"

#include "indicators/MaNIndicator.h"

#include <algorithm>

void IndicatorEvaluator::bind(StockBars bars, IndicatorCache &cache)
{
    MetaEvalutor::bind(bars, cache);
    if (m_lineKey.isEmpty())
        m_lineKey = cacheKey() + QLatin1Char('#') + QString::number(lineIndex());
    m_shared = cache.line(m_lineKey,
                          [&](IndicatorLine &line) { computeLine(bars, cache, line.values, line.defined); });
    m_values = m_shared->values.data();
    m_defined = m_shared->defined.data();
}

void IndicatorEvaluator::computeLine(StockBars bars, IndicatorCache &cache, std::vector<float> &line,
                                     std::vector<unsigned char> &defined)
{
    const IndicatorCache::Results &results =
        cache.results(cacheKey(), bars, [this] { return makeIndicator(); });
    line.resize(bars.size());
    defined.resize(bars.size());
    for (size_t i = 0; i < bars.size(); ++i) {
        defined[i] = results[i].valid;
        line[i] = lineOf(results[i]);
    }
}

int IndicatorEvaluator::value(int dayIndex, EvalValue &out) const
{
    const int i = barIndex(dayIndex);
    if (i < 0 || !m_defined[size_t(i)])
        return -1;
    out.kind = EvalValue::Number;
    out.number = m_values[size_t(i)];
    return 1;
}

void IndicatorEvaluator::numbers(int from, int to, double *out, unsigned char *delivered) const
{
    const std::pair<int, int> usable = markUnusableDays(from, to, out, delivered);
    if (usable.first == usable.second)
        return;
    // Two plain copies the compiler turns into vector moves: an undefined
    // day's value is read but means nothing.
    const size_t first = size_t(usable.first + offset), count = size_t(usable.second - usable.first);
    std::copy_n(m_defined + first, count, delivered + (usable.first - from));
    std::copy_n(m_values + first, count, out + (usable.first - from));
}

bool PeriodEvaluator::parse(const QString &text)
{
    const QStringList pieces = EvaluatorArguments::split(text);
    if (pieces.size() != 3 || pieces[0] != names().constFirst())
        return false;
    m_period = EvaluatorArguments::toInt(pieces[1]);
    offset = EvaluatorArguments::toInt(pieces[2]);
    return true;
}

void WindowAverageEvaluator::computeLine(StockBars bars, IndicatorCache &, std::vector<float> &line,
                                         std::vector<unsigned char> &defined)
{
    m_field.resize(bars.size());
    const float Stock::*field = this->field();
    for (size_t i = 0; i < bars.size(); ++i)
        m_field[i] = bars[i].*field;
    WindowAverageIndicator::averages(m_field, m_period, line);
    defined.assign(bars.size(), 0);
    if (m_period > 0 && bars.size() >= size_t(m_period))
        std::fill(defined.begin() + (m_period - 1), defined.end(), 1);
}
