#pragma once

#include "DayColumns.h"
#include "MetaEvalutor.h"

#include <memory>
#include <vector>

using Operands = std::vector<std::unique_ptr<MetaEvalutor>>;

// Judges the operands of one term on one day: 1 true, -1 false, 0 undecidable.
struct Comparator {
    virtual ~Comparator() = default;
    virtual int compare(const Operands &evaluators, int dayIndex) const = 0;
    // Whether compare() is 1, for every day of [from, to) that is `asked`
    // (at [day - from]); the answer for the others may be anything.
    virtual void holdsOnDays(const Operands &evaluators, int from, int to, const unsigned char *asked,
                             unsigned char *holds, DayColumns &columns) const;
};

// A numeric comparison is false when either side has no value on the day
// (an unusable bar, an average not yet defined) or fails; equal is false.
struct Comparator_Greater2 : Comparator {
    int compare(const Operands &evaluators, int dayIndex) const override;
    void holdsOnDays(const Operands &evaluators, int from, int to, const unsigned char *asked,
                     unsigned char *holds, DayColumns &columns) const override;
};

struct Comparator_Less2 : Comparator {
    int compare(const Operands &evaluators, int dayIndex) const override;
    void holdsOnDays(const Operands &evaluators, int from, int to, const unsigned char *asked,
                     unsigned char *holds, DayColumns &columns) const override;
};

struct Comparator_Boolean : Comparator {
    int compare(const Operands &evaluators, int dayIndex) const override;
};

// ">" , "<" or "boolean"; nullptr for anything else. Comparators hold no
// state, so every term shares the one of its kind.
const Comparator *createComparator(const QString &kind);
