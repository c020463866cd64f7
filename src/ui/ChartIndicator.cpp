#include "ChartIndicator.h"

namespace {

const QColor kFirst(230, 230, 230);
const QColor kSecond(Qt::yellow);
const QColor kThird(230, 80, 230);
const QColor kFourth(90, 200, 90);
const QColor kMiddle(255, 150, 0); // not the yellow of the 5-day average it runs beside

} // namespace

QString chartIndicatorText(ChartIndicator indicator)
{
    switch (indicator) {
    case ChartIndicator::Macd: return QStringLiteral("MACD");
    case ChartIndicator::Kdj: return QStringLiteral("KDJ");
    case ChartIndicator::Boll: return QStringLiteral("BOLL");
    case ChartIndicator::Dmi: return QStringLiteral("DMI");
    }
    return {};
}

std::vector<ChartLine> chartIndicatorLines(ChartIndicator indicator, const DmiPeriods &dmi)
{
    switch (indicator) {
    case ChartIndicator::Macd:
        // The bar first, so the lines are drawn over it.
        return {{QStringLiteral("macd.bar,0"), kFirst},
                {QStringLiteral("macd.diff,0"), kFirst},
                {QStringLiteral("macd.dea,0"), kSecond}};
    case ChartIndicator::Kdj:
        return {{QStringLiteral("kdj.k,0"), kFirst},
                {QStringLiteral("kdj.d,0"), kSecond},
                {QStringLiteral("kdj.j,0"), kThird}};
    case ChartIndicator::Boll:
        return {{QStringLiteral("boll.upper,0"), kFirst},
                {QStringLiteral("boll.mid,0"), kMiddle},
                {QStringLiteral("boll.lower,0"), kThird}};
    case ChartIndicator::Dmi: {
        const QString periods = QStringLiteral(",%1,%2,0").arg(dmi.n).arg(dmi.m);
        return {{QStringLiteral("dmi.pdi") + periods, kFirst},
                {QStringLiteral("dmi.mdi") + periods, kSecond},
                {QStringLiteral("dmi.adx") + periods, kThird},
                {QStringLiteral("dmi.adxr") + periods, kFourth}};
    }
    }
    return {};
}

std::vector<ChartLine> chartAverageLines()
{
    return {{QStringLiteral("ma,5,0"), Qt::yellow, QStringLiteral("ma5")},
            {QStringLiteral("ma,10,0"), Qt::cyan, QStringLiteral("ma10")},
            {QStringLiteral("ma,20,0"), Qt::gray, QStringLiteral("ma20")}};
}
