#pragma once

#include "IndicatorEvaluator.h"

// "ema,period,offset": the exponential average of the close. A period of 0 or less never has a value.
struct Indicator_ema : PeriodEvaluator {
    std::unique_ptr<MetaEvalutor> clone() const override { return cloneTerm(*this); }
    QStringList names() const override { return {QStringLiteral("ema")}; }

protected:
    QString cacheKey() const override
    {
        return m_period > 0 ? QStringLiteral("ema,%1").arg(m_period) : QString();
    }
    std::unique_ptr<StockIndicator> makeIndicator() const override;
};
