#include "Comparator.h"

namespace {

// Both operands' numbers for the day, or false when either has none. Each
// side has its own fresh record: a pattern term sets no number and reads 0.
bool operandsOf(const std::vector<MetaEvalutor *> &evaluators, int dayIndex, double &left, double &right)
{
    EvalValue leftValue, rightValue;
    if (evaluators[0]->value(dayIndex, leftValue) != 1 || evaluators[1]->value(dayIndex, rightValue) != 1)
        return false;
    left = leftValue.number;
    right = rightValue.number;
    return true;
}

} // namespace

int Comparator_Greater2::compare(const std::vector<MetaEvalutor *> &evaluators, int dayIndex) const
{
    if (evaluators.size() != 2)
        return 0;
    double left = 0, right = 0;
    return operandsOf(evaluators, dayIndex, left, right) && left > right ? 1 : -1;
}

int Comparator_Less2::compare(const std::vector<MetaEvalutor *> &evaluators, int dayIndex) const
{
    if (evaluators.size() != 2)
        return 0;
    double left = 0, right = 0;
    return operandsOf(evaluators, dayIndex, left, right) && left < right ? 1 : -1;
}

int Comparator_Boolean::compare(const std::vector<MetaEvalutor *> &evaluators, int dayIndex) const
{
    if (evaluators.size() != 1)
        return -1;
    EvalValue value;
    if (evaluators[0]->value(dayIndex, value) != 1)
        return -1;
    return value.kind == EvalValue::Boolean && value.flag ? 1 : -1;
}

Comparator *createComparator(const QString &kind)
{
    if (kind == QLatin1String(">"))
        return new Comparator_Greater2;
    if (kind == QLatin1String("<"))
        return new Comparator_Less2;
    if (kind == QLatin1String("boolean"))
        return new Comparator_Boolean;
    return nullptr;
}
