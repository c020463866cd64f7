#include "Comparator.h"

namespace {

// Both operands' numbers for the day, or false when either has none. Each
// side has its own fresh record: a pattern term sets no number and reads 0.
bool operandsOf(const Operands &evaluators, int dayIndex, double &left, double &right)
{
    EvalValue leftValue, rightValue;
    if (evaluators[0]->value(dayIndex, leftValue) != 1 || evaluators[1]->value(dayIndex, rightValue) != 1)
        return false;
    left = leftValue.number;
    right = rightValue.number;
    return true;
}

} // namespace

int Comparator_Greater2::compare(const Operands &evaluators, int dayIndex) const
{
    if (evaluators.size() != 2)
        return 0;
    double left = 0, right = 0;
    return operandsOf(evaluators, dayIndex, left, right) && left > right ? 1 : -1;
}

int Comparator_Less2::compare(const Operands &evaluators, int dayIndex) const
{
    if (evaluators.size() != 2)
        return 0;
    double left = 0, right = 0;
    return operandsOf(evaluators, dayIndex, left, right) && left < right ? 1 : -1;
}

int Comparator_Boolean::compare(const Operands &evaluators, int dayIndex) const
{
    if (evaluators.size() != 1)
        return -1;
    EvalValue value;
    if (evaluators[0]->value(dayIndex, value) != 1)
        return -1;
    return value.kind == EvalValue::Boolean && value.flag ? 1 : -1;
}

const Comparator *createComparator(const QString &kind)
{
    static const Comparator_Greater2 greater;
    static const Comparator_Less2 less;
    static const Comparator_Boolean boolean;
    if (kind == QLatin1String(">"))
        return &greater;
    if (kind == QLatin1String("<"))
        return &less;
    if (kind == QLatin1String("boolean"))
        return &boolean;
    return nullptr;
}
