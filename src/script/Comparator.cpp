#include "Comparator.h"

#include <algorithm>
#include <functional>

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

// Both operands' columns for the days, then the comparison where both delivered.
template <class Compare>
void numericHolds(const Operands &evaluators, int from, int to, unsigned char *holds, DayColumns &columns,
                  Compare compare)
{
    const size_t days = size_t(std::max(0, to - from));
    if (evaluators.size() != 2) {
        std::fill(holds, holds + days, 0);
        return;
    }
    columns.fit(days);
    evaluators[0]->numbers(from, to, columns.left.data(), columns.leftDelivered.data());
    evaluators[1]->numbers(from, to, columns.right.data(), columns.rightDelivered.data());
    for (size_t i = 0; i < days; ++i)
        holds[i] = columns.leftDelivered[i] & columns.rightDelivered[i] &
                   compare(columns.left[i], columns.right[i]);
}

} // namespace

void Comparator::holdsOnDays(const Operands &evaluators, int from, int to, const unsigned char *asked,
                             unsigned char *holds, DayColumns &) const
{
    for (int day = from; day < to; ++day)
        holds[day - from] = asked[day - from] && compare(evaluators, day) == 1;
}

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

// A numeric comparison judges every day: reading whole columns costs less
// than picking the asked days.
void Comparator_Greater2::holdsOnDays(const Operands &evaluators, int from, int to, const unsigned char *,
                                      unsigned char *holds, DayColumns &columns) const
{
    numericHolds(evaluators, from, to, holds, columns, std::greater<double>());
}

void Comparator_Less2::holdsOnDays(const Operands &evaluators, int from, int to, const unsigned char *,
                                   unsigned char *holds, DayColumns &columns) const
{
    numericHolds(evaluators, from, to, holds, columns, std::less<double>());
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
