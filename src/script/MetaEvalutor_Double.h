#pragma once

#include "MetaEvalutor.h"

#include <algorithm>

// "value,number": a constant, the same on every day.
struct MetaEvalutor_Double : MetaEvalutor {
    std::unique_ptr<MetaEvalutor> clone() const override { return cloneTerm(*this); }
    QStringList names() const override { return {QStringLiteral("value")}; }
    bool parse(const QString &text) override;
    int value(int dayIndex, EvalValue &out) const override;
    void numbers(int from, int to, double *out, unsigned char *delivered) const override
    {
        const int days = std::max(0, to - from);
        std::fill(out, out + days, m_constant);
        std::fill(delivered, delivered + days, 1);
    }

private:
    double m_constant = 0;
};
