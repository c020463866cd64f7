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
    const Stock &bar = m_bars[size_t(i)];
    out.kind = EvalValue::Number;
    switch (m_field) {
    case Field::Open: out.number = bar.open; break;
    case Field::High: out.number = bar.high; break;
    case Field::Low: out.number = bar.low; break;
    case Field::Close: out.number = bar.close; break;
    case Field::Vol: out.number = bar.volume; break;
    case Field::Swing: out.number = (double(bar.high) - bar.low) * 100 / bar.low; break;
    case Field::Increase: {
        const double previousClose = m_bars[size_t(i - 1)].close;
        const float prices[] = {bar.close, bar.open, bar.high, bar.low, bar.close};
        out.number = (prices[m_mode] - previousClose) * 100 / previousClose;
        break;
    }
    }
    return 1;
}
