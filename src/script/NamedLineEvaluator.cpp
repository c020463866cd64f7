#include "NamedLineEvaluator.h"

bool NamedLineEvaluator::parse(const QString &text)
{
    const QStringList pieces = EvaluatorArguments::split(text);
    if (pieces.size() != 2)
        return false;
    m_line = int(names().indexOf(pieces[0]));
    offset = EvaluatorArguments::toInt(pieces[1]);
    return m_line >= 0;
}
