#include "IndicatorEvaluator.h"

void IndicatorEvaluator::bind(StockBars bars)
{
    MetaEvalutor::bind(bars);
    m_line.assign(bars.size(), 0.0f);
    m_defined.assign(bars.size(), 0);
    if (!m_indicatorMade) {
        m_indicator = makeIndicator();
        m_indicatorMade = true;
    }
    if (!m_indicator)
        return;
    m_indicator->reset();
    for (size_t i = 0; i < bars.size(); ++i) {
        const IndicatorValue result = m_indicator->next(bars[i]);
        m_defined[i] = result.valid;
        m_line[i] = lineOf(result);
    }
}

int IndicatorEvaluator::value(int dayIndex, EvalValue &out) const
{
    const int i = barIndex(dayIndex);
    if (i < 0 || !m_defined[size_t(i)])
        return -1;
    out.kind = EvalValue::Number;
    out.number = m_line[size_t(i)];
    return 1;
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
