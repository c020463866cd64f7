#pragma once

#include "MetaEvalutor.h"

// "value,number": a constant, the same on every day.
struct MetaEvalutor_Double : MetaEvalutor {
    std::unique_ptr<MetaEvalutor> clone() const override { return cloneTerm(*this); }
    QStringList names() const override { return {QStringLiteral("value")}; }
    bool parse(const QString &text) override;
    int value(int dayIndex, EvalValue &out) const override;

private:
    double m_constant = 0;
};
