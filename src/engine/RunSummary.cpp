#include "RunSummary.h"

#include <cmath>
#include <cstdio>

RunSummary RunSummary::fromBook(const TradeBook &book)
{
    RunSummary summary;
    long long holdSum = 0;
    int successes = 0;
    double gainSum = 0;
    summary.rows = book.size();
    for (qsizetype row = 0; row < book.size(); ++row) {
        const TradeRecord &record = book[row];
        if (record.summaryCount != SummaryCount::Counted)
            continue;
        holdSum += record.holdDays;
        if (record.salePrice >= record.buyPrice)
            ++successes;
        gainSum += (record.salePrice - record.buyPrice) * 100 / record.buyPrice;
        ++summary.trades;
    }
    if (summary.trades > 0) {
        summary.averageHoldDays = double(holdSum) / summary.trades;
        summary.averageGain = gainSum / summary.trades;
        summary.successRate = double(successes) / summary.trades * 100;
    }
    return summary;
}

QString RunSummary::text() const
{
    if (rows == 0)
        return QStringLiteral("无数据");
    return QStringLiteral("买卖次数:%1\n平均持股天数:%2\n策略成功率:%3\n平均收益:%4\n")
        .arg(trades)
        .arg(fixedTwoDecimals(averageHoldDays), fixedTwoDecimals(successRate), fixedTwoDecimals(averageGain));
}

QString fixedTwoDecimals(double value)
{
    // A zero buy price gives a not-a-number whose sign bit printf would show.
    if (std::isnan(value))
        return QStringLiteral("nan");
    char buffer[400];
    std::snprintf(buffer, sizeof buffer, "%.2f", value);
    return QString::fromLatin1(buffer);
}
