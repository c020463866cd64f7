#pragma once

#include "IndicatorEvaluator.h"

// "dmi.pdi", "dmi.mdi", "dmi.adx", "dmi.adxr" with "name,N,M,offset":
// N steps of direction sums, M values of ADX averaging.
struct MetaEvalator_DMI : IndicatorEvaluator {
    std::unique_ptr<MetaEvalutor> clone() const override { return cloneTerm(*this); }
    static const QStringList &nameList()
    {
        static const QStringList names =
            QStringLiteral("dmi.pdi|dmi.mdi|dmi.adx|dmi.adxr").split(QLatin1Char('|'));
        return names;
    }
    QStringList names() const override { return nameList(); }
    bool parse(const QString &text) override;

protected:
    QString cacheKey() const override { return QStringLiteral("dmi,%1,%2").arg(m_n).arg(m_m); }
    std::unique_ptr<StockIndicator> makeIndicator() const override;
    int lineIndex() const override { return m_line; }
    float lineOf(const IndicatorValue &r) const override;

private:
    int m_line = 0;
    int m_n = 14;
    int m_m = 6;
};
