#include "MetaEvalutor_K.h"

#include <algorithm>

bool MetaEvalutor_K::parse(const QString &text)
{
    const QStringList pieces = EvaluatorArguments::split(text);
    if (pieces.size() != 2)
        return false;
    offset = EvaluatorArguments::toInt(pieces[1]);
    m_recognize = KPatternTable::find(pieces[0]);
    return offset <= 0 && m_recognize;
}

int MetaEvalutor_K::value(int dayIndex, EvalValue &out) const
{
    const long long count = (long long)dayIndex - offset + 1;
    if (count < 3)
        return -1;
    const size_t bars = size_t(std::min<long long>(count, (long long)m_bars.size()));
    out.kind = EvalValue::Boolean;
    out.flag = m_recognize(m_bars.first(bars));
    return 1;
}
