#pragma once

#include "Comparator.h"
#include "MetaEvalutor.h"

#include <vector>

// One alternative of a statement: two operands and a comparison, or one
// boolean term. Owns its comparator and evaluators.
class StatementObject {
public:
    StatementObject() = default;
    StatementObject(const StatementObject &) = delete;
    StatementObject &operator=(const StatementObject &) = delete;
    virtual ~StatementObject();

    virtual bool parse(const QString &text);
    virtual void reset();
    virtual void bind(StockBars bars);
    // 1 true, -1 false, 0 undecidable.
    virtual int evaluate(int dayIndex) const;

protected:
    std::vector<MetaEvalutor *> m_evaluators;
    Comparator *m_comparator = nullptr;

private:
    bool parseComparison(const QString &text, bool &failed);
    bool parseBooleanTerm(const QString &text);
};

// A statement with alternatives separated by "|": true when any is.
class StatementObjectNode : public StatementObject {
public:
    ~StatementObjectNode() override;

    bool parse(const QString &text) override;
    void reset() override;
    void bind(StockBars bars) override;
    int evaluate(int dayIndex) const override;

private:
    std::vector<StatementObject *> m_children;
};
