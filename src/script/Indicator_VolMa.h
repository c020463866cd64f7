#pragma once

#include "IndicatorEvaluator.h"

// "volma,period,offset": the average of the volume. A period of 0 or less never has a value.
struct Indicator_VolMa : WindowAverageEvaluator {
    std::unique_ptr<MetaEvalutor> clone() const override { return cloneTerm(*this); }
    QStringList names() const override { return {QStringLiteral("volma")}; }

protected:
    float Stock::*field() const override { return &Stock::volume; }
};
