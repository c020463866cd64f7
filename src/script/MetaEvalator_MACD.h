#pragma once

#include "NamedLineEvaluator.h"

// "macd.bar", "macd.diff", "macd.dea" of MACD(12, 26, 9).
struct MetaEvalator_MACD : NamedLineEvaluator {
    std::unique_ptr<MetaEvalutor> clone() const override { return cloneTerm(*this); }
    static const QStringList &nameList()
    {
        static const QStringList names =
            QStringLiteral("macd.bar|macd.diff|macd.dea").split(QLatin1Char('|'));
        return names;
    }
    QStringList names() const override { return nameList(); }

protected:
    QString cacheKey() const override { return QStringLiteral("macd"); }
    std::unique_ptr<StockIndicator> makeIndicator() const override;
};
