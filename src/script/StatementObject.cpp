#include "StatementObject.h"

#include <QStringList>

#include <algorithm>

StatementObject::StatementObject(const StatementObject &other) : m_comparator(other.m_comparator)
{
    for (const std::unique_ptr<MetaEvalutor> &evaluator : other.m_evaluators)
        m_evaluators.push_back(evaluator->clone());
}

bool StatementObject::parse(const QString &text)
{
    bool failed = false;
    if (parseComparison(text, failed))
        return true;
    if (failed)
        return false;
    // "tick." terms were meant for tick data; no evaluator knows them, so
    // they reach the factory and fail there like any unknown name.
    if (text.startsWith(QLatin1String("k.")) || text.startsWith(QLatin1String("tick.")))
        return parseBooleanTerm(text);
    return false;
}

// Tries ">" then "<": a side that names no evaluator lets the next operator
// try; operands that do not read their arguments fail the whole term.
bool StatementObject::parseComparison(const QString &text, bool &failed)
{
    for (const QString &op : {QStringLiteral(">"), QStringLiteral("<")}) {
        const QStringList sides = text.split(op);
        if (sides.size() != 2)
            continue;
        std::unique_ptr<MetaEvalutor> left = createEvaluator(sides[0].section(QLatin1Char(','), 0, 0));
        std::unique_ptr<MetaEvalutor> right = createEvaluator(sides[1].section(QLatin1Char(','), 0, 0));
        if (!left || !right)
            continue;
        if (!left->parse(sides[0]) || !right->parse(sides[1])) {
            failed = true;
            return false;
        }
        m_comparator = createComparator(op);
        m_evaluators.push_back(std::move(left));
        m_evaluators.push_back(std::move(right));
        return true;
    }
    return false;
}

bool StatementObject::parseBooleanTerm(const QString &text)
{
    std::unique_ptr<MetaEvalutor> evaluator = createEvaluator(text);
    if (!evaluator || !evaluator->parse(text))
        return false;
    m_comparator = createComparator(QStringLiteral("boolean"));
    m_evaluators.push_back(std::move(evaluator));
    return true;
}

void StatementObject::bind(StockBars bars, IndicatorCache &cache)
{
    for (const std::unique_ptr<MetaEvalutor> &evaluator : m_evaluators)
        evaluator->bind(bars, cache);
}

int StatementObject::evaluate(int dayIndex) const
{
    return m_comparator ? m_comparator->compare(m_evaluators, dayIndex) : 0;
}

void StatementObject::holdsOnDays(int from, int to, const unsigned char *asked, unsigned char *holds,
                                  DayColumns &columns) const
{
    if (m_comparator)
        m_comparator->holdsOnDays(m_evaluators, from, to, asked, holds, columns);
    else
        std::fill(holds, holds + std::max(0, to - from), 0);
}

bool StatementObjectNode::parse(const QString &text)
{
    for (const QString &alternative : text.split(QLatin1Char('|'))) {
        StatementObject child;
        if (!child.parse(alternative))
            return false;
        m_children.push_back(std::move(child));
    }
    return true;
}

void StatementObjectNode::bind(StockBars bars, IndicatorCache &cache)
{
    for (StatementObject &child : m_children)
        child.bind(bars, cache);
}

bool StatementObjectNode::holds(int dayIndex) const
{
    for (const StatementObject &child : m_children) {
        if (child.evaluate(dayIndex) == 1)
            return true;
    }
    return false;
}

void StatementObjectNode::holdsOnDays(int from, int to, const unsigned char *asked, unsigned char *holds,
                                      DayColumns &columns) const
{
    const size_t days = size_t(std::max(0, to - from));
    columns.fit(days);
    combineDays(
        m_children, false, from, days, asked, holds, columns.alternativeAsked.data(), columns.alternative.data(),
        [&](const StatementObject &child, const unsigned char *open, unsigned char *column) {
            child.holdsOnDays(from, to, open, column, columns);
        },
        [](const StatementObject &child, int day) { return child.evaluate(day) == 1; });
}
