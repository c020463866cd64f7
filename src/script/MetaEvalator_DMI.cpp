#include "MetaEvalator_DMI.h"

#include "indicators/DMIStockIndicator.h"

bool MetaEvalator_DMI::parse(const QString &text)
{
    const QStringList pieces = EvaluatorArguments::split(text);
    if (pieces.size() != 4)
        return false;
    m_line = int(nameList().indexOf(pieces[0]));
    m_n = EvaluatorArguments::toInt(pieces[1]);
    m_m = EvaluatorArguments::toInt(pieces[2]);
    offset = EvaluatorArguments::toInt(pieces[3]);
    return m_line >= 0 && m_n >= m_m && m_n >= 6 && m_m >= 2;
}

std::unique_ptr<StockIndicator> MetaEvalator_DMI::makeIndicator() const
{
    return std::make_unique<DMIStockIndicator>(m_n, m_m);
}

float MetaEvalator_DMI::lineOf(const IndicatorValue &r) const
{
    const float lines[] = {r.value1, r.value2, r.value3, r.value4};
    return lines[m_line];
}
