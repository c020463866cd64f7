#pragma once

#include "MetaEvalutor.h"

// The day's own fields: "open", "high", "low", "close", "vol", and the
// percentages "increase" (against the previous close) and "swing".
struct MetaEvalator_OHLC : MetaEvalutor {
    std::unique_ptr<MetaEvalutor> clone() const override { return cloneTerm(*this); }
    static const QStringList &nameList();
    QStringList names() const override { return nameList(); }
    bool parse(const QString &text) override;
    int value(int dayIndex, EvalValue &out) const override;
    void numbers(int from, int to, double *out, unsigned char *delivered) const override;

private:
    enum class Field { Open, High, Low, Close, Increase, Swing, Vol };
    // The bar field read as it stands, or null for the percentages.
    float Stock::*plainField() const;
    double numberAt(size_t barIndex) const;
    Field m_field = Field::Close;
    int m_mode = 0; // which price "increase" measures against the previous close
};
