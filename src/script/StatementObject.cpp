#include "StatementObject.h"

#include <QStringList>

StatementObject::~StatementObject()
{
    delete m_comparator;
    for (MetaEvalutor *evaluator : m_evaluators)
        delete evaluator;
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
        MetaEvalutor *left = createEvaluator(sides[0].section(QLatin1Char(','), 0, 0));
        MetaEvalutor *right = createEvaluator(sides[1].section(QLatin1Char(','), 0, 0));
        if (!left || !right) {
            delete left;
            delete right;
            continue;
        }
        if (!left->parse(sides[0]) || !right->parse(sides[1])) {
            delete left;
            delete right;
            failed = true;
            return false;
        }
        m_comparator = createComparator(op);
        m_evaluators = {left, right};
        return true;
    }
    return false;
}

bool StatementObject::parseBooleanTerm(const QString &text)
{
    MetaEvalutor *evaluator = createEvaluator(text);
    if (!evaluator || !evaluator->parse(text)) {
        delete evaluator;
        return false;
    }
    m_comparator = createComparator(QStringLiteral("boolean"));
    m_evaluators = {evaluator};
    return true;
}

void StatementObject::reset()
{
    for (MetaEvalutor *evaluator : m_evaluators)
        evaluator->reset();
}

void StatementObject::bind(StockBars bars)
{
    for (MetaEvalutor *evaluator : m_evaluators)
        evaluator->bind(bars);
}

int StatementObject::evaluate(int dayIndex) const
{
    return m_comparator ? m_comparator->compare(m_evaluators, dayIndex) : 0;
}

StatementObjectNode::~StatementObjectNode()
{
    for (StatementObject *child : m_children)
        delete child;
}

bool StatementObjectNode::parse(const QString &text)
{
    for (const QString &alternative : text.split(QLatin1Char('|'))) {
        auto *child = new StatementObject;
        if (!child->parse(alternative)) {
            delete child;
            return false;
        }
        m_children.push_back(child);
    }
    return true;
}

void StatementObjectNode::reset()
{
    for (StatementObject *child : m_children)
        child->reset();
}

void StatementObjectNode::bind(StockBars bars)
{
    for (StatementObject *child : m_children)
        child->bind(bars);
}

int StatementObjectNode::evaluate(int dayIndex) const
{
    for (const StatementObject *child : m_children) {
        if (child->evaluate(dayIndex) == 1)
            return 1;
    }
    return 0;
}
