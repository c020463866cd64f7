#pragma once

#include "market/Stock.h"

#include <QString>
#include <QStringList>

// The value of one operand on one day.
struct EvalValue {
    enum Kind { Boolean = 0, Number = 2 };
    int kind = Boolean;
    bool flag = false;
    double number = 0.0;
    QString text;
};

// One operand of a strategy term: created by name, reads its own arguments,
// is bound to one stock's bars, then answers per day index.
struct MetaEvalutor {
    int offset = 0;

    virtual ~MetaEvalutor() = default;
    virtual QStringList names() const = 0;
    virtual bool parse(const QString &text) = 0;
    // 1: value delivered; 0: failure; -1: no usable bar for that day.
    virtual int value(int dayIndex, EvalValue &out) const = 0;
    virtual void bind(StockBars bars) { m_bars = bars; }
    virtual void reset() {}

protected:
    // The bar read for a day, or -1. Index 0 is never usable: "increase"
    // needs the bar before it, and every term keeps to the same rule.
    int barIndex(int dayIndex) const
    {
        const long long index = (long long)dayIndex + offset;
        return index > 0 && index < (long long)m_bars.size() ? int(index) : -1;
    }

    StockBars m_bars;
};

// The evaluator whose name list holds `name`, or nullptr.
MetaEvalutor *createEvaluator(const QString &name);

// Every evaluator name, offered to the editor as vocabulary.
QStringList evaluatorKeywordList();

namespace EvaluatorArguments {
// The operand split at ","; empty pieces kept.
QStringList split(const QString &text);
// Base-10 integer; anything else reads 0.
int toInt(const QString &piece);
} // namespace EvaluatorArguments
