#pragma once

#include "market/Stock.h"

#include <QString>
#include <QStringList>

#include <algorithm>
#include <memory>
#include <utility>

class IndicatorCache;

// The value of one operand on one day.
struct EvalValue {
    enum Kind { Boolean = 0, Number = 2 };
    int kind = Boolean;
    bool flag = false;
    double number = 0.0;
};

// One operand of a strategy term: created by name, reads its own arguments,
// is bound to one stock's bars, then answers per day index. A compiled term is
// never bound itself: each worker binds its own copy (clone()).
struct MetaEvalutor {
    int offset = 0;

    virtual ~MetaEvalutor() = default;
    virtual std::unique_ptr<MetaEvalutor> clone() const = 0;
    virtual QStringList names() const = 0;
    virtual bool parse(const QString &text) = 0;
    // 1: value delivered; 0: failure; -1: no usable bar for that day.
    virtual int value(int dayIndex, EvalValue &out) const = 0;
    // value() for every day of [from, to) at once: whether it was delivered
    // and the number, at [day - from]; a number not delivered means nothing.
    // Terms whose value is a lookup answer a whole stock without a call per day.
    virtual void numbers(int from, int to, double *out, unsigned char *delivered) const
    {
        for (int day = from; day < to; ++day) {
            EvalValue value;
            delivered[day - from] = this->value(day, value) == 1;
            out[day - from] = value.number;
        }
    }
    // Terms backed by an indicator take its values from `cache`, so that terms
    // bound with one cache compute each indicator once per stock.
    virtual void bind(StockBars bars, IndicatorCache &) { m_bars = bars; }

protected:
    // The bar read for a day, or -1. Index 0 is never usable: "increase"
    // needs the bar before it, and every term keeps to the same rule.
    int barIndex(int dayIndex) const
    {
        const long long index = (long long)dayIndex + offset;
        return index > 0 && index < (long long)m_bars.size() ? int(index) : -1;
    }

    // The days of [from, to) whose bar is usable, as [first, last): every
    // day before or after them has none.
    std::pair<int, int> usableDays(int from, int to) const
    {
        const auto clampDay = [from, to](long long day) { return int(std::clamp<long long>(day, from, to)); };
        const int first = clampDay(1LL - offset);
        return {first, std::max(first, clampDay((long long)m_bars.size() - offset))};
    }

    // Marks the days of [from, to) outside [first, last) as having no number.
    static void markUnusable(int from, int to, std::pair<int, int> usable, double *out, unsigned char *delivered)
    {
        std::fill(out, out + (usable.first - from), 0.0);
        std::fill(delivered, delivered + (usable.first - from), 0);
        std::fill(out + (usable.second - from), out + (to - from), 0.0);
        std::fill(delivered + (usable.second - from), delivered + (to - from), 0);
    }

    StockBars m_bars;
};

// The evaluator whose name list holds `name`, or nullptr.
std::unique_ptr<MetaEvalutor> createEvaluator(const QString &name);

// clone() for a concrete term: a copy of its compiled arguments.
template <class Term>
std::unique_ptr<MetaEvalutor> cloneTerm(const Term &term)
{
    return std::make_unique<Term>(term);
}

// Every evaluator name, offered to the editor as vocabulary.
QStringList evaluatorKeywordList();

namespace EvaluatorArguments {
// The operand split at ","; empty pieces kept.
QStringList split(const QString &text);
// Base-10 integer; anything else reads 0.
int toInt(const QString &piece);
} // namespace EvaluatorArguments
