#include "MetaEvalator_OHLC.h"

const QStringList &MetaEvalator_OHLC::nameList()
{
    static const QStringList names =
        QStringLiteral("open|high|low|close|increase|swing|vol").split(QLatin1Char('|'));
    return names;
}

bool MetaEvalator_OHLC::parse(const QString &text)
{
    const QStringList pieces = EvaluatorArguments::split(text);
    const int field = int(nameList().indexOf(pieces[0]));
    if (field < 0)
        return false;
    m_field = Field(field);
    if (pieces.size() == 2) {
        m_mode = 0;
        offset = EvaluatorArguments::toInt(pieces[1]);
        return true;
    }
    if (pieces.size() != 3 || m_field != Field::Increase)
        return false;
    m_mode = EvaluatorArguments::toInt(pieces[1]);
    offset = EvaluatorArguments::toInt(pieces[2]);
    return m_mode >= 1 && m_mode <= 4;
}

int MetaEvalator_OHLC::value(int dayIndex, EvalValue &out) const
{
    const int i = barIndex(dayIndex);
    if (i < 0)
        return -1;
    out.kind = EvalValue::Number;
    out.number = numberAt(size_t(i));
    return 1;
}

void MetaEvalator_OHLC::numbers(int from, int to, double *out, unsigned char *delivered) const
{
    const std::pair<int, int> usable = markUnusableDays(from, to, out, delivered);
    if (usable.first == usable.second)
        return;
    std::fill(delivered + (usable.first - from), delivered + (usable.second - from), 1);
    const size_t first = size_t(usable.first + offset), count = size_t(usable.second - usable.first);
    double *numbers = out + (usable.first - from);
    // A plain field is read straight from the bars, without a switch per day.
    float Stock::*const field = plainField();
    if (!field) {
        for (size_t i = 0; i < count; ++i)
            numbers[i] = numberAt(first + i);
        return;
    }
    const Stock *bars = m_bars.data() + first;
    for (size_t i = 0; i < count; ++i)
        numbers[i] = double(bars[i].*field);
}

float Stock::*MetaEvalator_OHLC::plainField() const
{
    switch (m_field) {
    case Field::Open: return &Stock::open;
    case Field::High: return &Stock::high;
    case Field::Low: return &Stock::low;
    case Field::Close: return &Stock::close;
    case Field::Vol: return &Stock::volume;
    case Field::Increase:
    case Field::Swing: return nullptr;
    }
    return nullptr;
}

double MetaEvalator_OHLC::numberAt(size_t i) const
{
    const Stock &bar = m_bars[i];
    if (float Stock::*const field = plainField())
        return bar.*field;
    if (m_field == Field::Swing)
        return (double(bar.high) - bar.low) * 100 / bar.low;
    const double previousClose = m_bars[i - 1].close;
    const float prices[] = {bar.close, bar.open, bar.high, bar.low, bar.close};
    return (prices[m_mode] - previousClose) * 100 / previousClose;
}
