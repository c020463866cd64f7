#pragma once

#include "MetaEvalutor.h"

#include <vector>

// Judges the operands of one term on one day: 1 true, -1 false, 0 undecidable.
struct Comparator {
    virtual ~Comparator() = default;
    virtual int compare(const std::vector<MetaEvalutor *> &evaluators, int dayIndex) const = 0;
};

// A numeric comparison is false when either side has no value on the day
// (an unusable bar, an average not yet defined) or fails; equal is false.
struct Comparator_Greater2 : Comparator {
    int compare(const std::vector<MetaEvalutor *> &evaluators, int dayIndex) const override;
};

struct Comparator_Less2 : Comparator {
    int compare(const std::vector<MetaEvalutor *> &evaluators, int dayIndex) const override;
};

struct Comparator_Boolean : Comparator {
    int compare(const std::vector<MetaEvalutor *> &evaluators, int dayIndex) const override;
};

// ">" , "<" or "boolean"; nullptr for anything else.
Comparator *createComparator(const QString &kind);
