#pragma once

#include "NamedLineEvaluator.h"

// "kdj.k", "kdj.d", "kdj.j" of KDJ(9, 3, 3).
struct MetaEvalator_KDJ : NamedLineEvaluator {
    std::unique_ptr<MetaEvalutor> clone() const override { return cloneTerm(*this); }
    static const QStringList &nameList()
    {
        static const QStringList names = QStringLiteral("kdj.k|kdj.d|kdj.j").split(QLatin1Char('|'));
        return names;
    }
    QStringList names() const override { return nameList(); }

protected:
    QString cacheKey() const override { return QStringLiteral("kdj"); }
    std::unique_ptr<StockIndicator> makeIndicator() const override;
};
