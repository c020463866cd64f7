#pragma once

#include "Comparator.h"
#include "MetaEvalutor.h"

#include <vector>

// One alternative of a statement: two operands and a comparison, or one
// boolean term. Copying it copies the compiled operands, unbound.
class StatementObject {
public:
    StatementObject() = default;
    StatementObject(const StatementObject &other);
    StatementObject &operator=(const StatementObject &) = delete;
    StatementObject(StatementObject &&) = default;
    StatementObject &operator=(StatementObject &&) = default;

    bool parse(const QString &text);
    void bind(StockBars bars, IndicatorCache &cache);
    // 1 true, -1 false, 0 undecidable.
    int evaluate(int dayIndex) const;
    // Whether evaluate() is 1, for the `asked` days of [from, to) at [day - from].
    void holdsOnDays(int from, int to, const unsigned char *asked, unsigned char *holds, DayColumns &columns) const;

private:
    bool parseComparison(const QString &text, bool &failed);
    bool parseBooleanTerm(const QString &text);

    Operands m_evaluators;
    const Comparator *m_comparator = nullptr;
};

// A whole `buy.` or `sale.` statement: its alternatives, separated by "|".
// It holds on a day when any alternative is true.
class StatementObjectNode {
public:
    bool parse(const QString &text);
    void bind(StockBars bars, IndicatorCache &cache);
    bool holds(int dayIndex) const;
    // holds() for the `asked` days of [from, to) at [day - from].
    void holdsOnDays(int from, int to, const unsigned char *asked, unsigned char *holds, DayColumns &columns) const;

private:
    std::vector<StatementObject> m_children;
};
