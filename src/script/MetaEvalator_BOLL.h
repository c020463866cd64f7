#pragma once

#include "NamedLineEvaluator.h"

// "boll.upper", "boll.mid", "boll.lower": the bands mid ± 2σ of BOLL(20).
struct MetaEvalator_BOLL : NamedLineEvaluator {
    std::unique_ptr<MetaEvalutor> clone() const override { return cloneTerm(*this); }
    static const QStringList &nameList()
    {
        static const QStringList names =
            QStringLiteral("boll.upper|boll.mid|boll.lower").split(QLatin1Char('|'));
        return names;
    }
    QStringList names() const override { return nameList(); }

protected:
    QString cacheKey() const override { return QStringLiteral("boll"); }
    std::unique_ptr<StockIndicator> makeIndicator() const override;
    float lineOf(const IndicatorValue &result) const override;
};
