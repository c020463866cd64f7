#pragma once

#include "IndicatorEvaluator.h"

// "name,offset" terms that pick one named line of a fixed-parameter indicator;
// the n-th name reads the indicator's n-th value.
struct NamedLineEvaluator : IndicatorEvaluator {
    bool parse(const QString &text) override;

protected:
    int lineIndex() const override { return m_line; }
    float lineOf(const IndicatorValue &r) const override
    {
        return m_line == 0 ? r.value1 : m_line == 1 ? r.value2 : r.value3;
    }

    int m_line = 0; // position of the name in names()
};
