#pragma once

#include "IndicatorEvaluator.h"

// "ema,period,offset": the exponential average of the close. A period of 0 or less never has a value.
struct Indicator_ema : PeriodEvaluator {
    QStringList names() const override { return {QStringLiteral("ema")}; }

protected:
    std::unique_ptr<StockIndicator> makeIndicator() const override;
};
