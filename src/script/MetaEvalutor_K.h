#pragma once

#include "MetaEvalutor.h"
#include "indicators/KPatternTable.h"

// "k.pattern,offset": whether the candlestick pattern ends on the day. The
// offset counts the other way from every other term: -1 judges the pattern
// ending on the next day. Users' scripts rely on this.
struct MetaEvalutor_K : MetaEvalutor {
    std::unique_ptr<MetaEvalutor> clone() const override { return cloneTerm(*this); }
    QStringList names() const override { return KPatternTable::names(); }
    bool parse(const QString &text) override;
    int value(int dayIndex, EvalValue &out) const override;

private:
    KPatternRecognizer m_recognize = nullptr;
};
