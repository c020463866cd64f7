#pragma once

#include "IndicatorEvaluator.h"

// "ma,period,offset": the average of the close. A period of 0 or less never has a value.
struct Indicator_ma : WindowAverageEvaluator {
    QStringList names() const override { return {QStringLiteral("ma")}; }

protected:
    std::unique_ptr<StockIndicator> makeIndicator() const override;
    float fieldOf(const Stock &bar) const override { return bar.close; }
};
