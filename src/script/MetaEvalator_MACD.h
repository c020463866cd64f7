#pragma once

#include "NamedLineEvaluator.h"

// "macd.bar", "macd.diff", "macd.dea" of MACD(12, 26, 9).
struct MetaEvalator_MACD : NamedLineEvaluator {
    static QStringList nameList()
    {
        return QStringLiteral("macd.bar|macd.diff|macd.dea").split(QLatin1Char('|'));
    }
    QStringList names() const override { return nameList(); }

protected:
    QString cacheKey() const override { return QStringLiteral("macd"); }
    std::unique_ptr<StockIndicator> makeIndicator() const override;
    float lineOf(const IndicatorValue &r) const override
    {
        return m_line == 0 ? r.value1 : m_line == 1 ? r.value2 : r.value3;
    }
};
