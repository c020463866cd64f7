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

    // Marks the days of [from, to) without a usable bar as delivering
    // nothing and returns the others, as [first, last). When there are none,
    // the range is empty and nothing is left to read: an offset beyond the
    // series may not even add up to a day.
    std::pair<int, int> markUnusableDays(int from, int to, double *out, unsigned char *delivered) const
    {
        if (from >= to)
            return {from, from};
        const auto clampDay = [from, to](long long day) { return int(std::clamp<long long>(day, from, to)); };
        const int first = clampDay(1LL - offset);
        const int last = std::max(first, clampDay((long long)m_bars.size() - offset));
        std::fill(out, out + (first - from), 0.0);
        std::fill(delivered, delivered + (first - from), 0);
        std::fill(out + (last - from), out + (to - from), 0.0);
        std::fill(delivered + (last - from), delivered + (to - from), 0);
        return {first, last};
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
