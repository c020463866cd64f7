#include "MetaEvalutor_Double.h"

#include "market/DecimalNumber.h"

bool MetaEvalutor_Double::parse(const QString &text)
{
    const QStringList pieces = EvaluatorArguments::split(text);
    if (pieces.size() != 2 || pieces[0] != QLatin1String("value"))
        return false;
    const std::optional<double> number = DecimalNumber::toDouble(QStringView(pieces[1]));
    if (!number)
        return false;
    m_constant = *number;
    return true;
}

int MetaEvalutor_Double::value(int, EvalValue &out) const
{
    out.kind = EvalValue::Number;
    out.number = m_constant;
    return 1;
}
