#pragma once

#include "IndicatorEvaluator.h"

// "name,offset" terms that pick one named line of a fixed-parameter indicator.
struct NamedLineEvaluator : IndicatorEvaluator {
    bool parse(const QString &text) override;

protected:
    int m_line = 0; // position of the name in names()
};
