#pragma once

#include "IndicatorEvaluator.h"

// "ma,period,offset": the average of the close. A period of 0 or less never has a value.
struct Indicator_ma : WindowAverageEvaluator {
    std::unique_ptr<MetaEvalutor> clone() const override { return cloneTerm(*this); }
    QStringList names() const override { return {QStringLiteral("ma")}; }

protected:
    float Stock::*field() const override { return &Stock::close; }
};
