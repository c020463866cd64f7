#pragma once

#include <QString>

// What the real-account rules changed in a run: trades whose sale T+1 put
// off, buys not filled at limit-up, sales not filled at limit-down (each
// trade counted once) and sales by the intraday stop.
struct RuleEffects {
    int t1Delayed = 0;
    int limitUpNotBought = 0;
    int limitDownNotSold = 0;
    int stopIntraday = 0;

    RuleEffects &operator+=(const RuleEffects &other)
    {
        t1Delayed += other.t1Delayed;
        limitUpNotBought += other.limitUpNotBought;
        limitDownNotSold += other.limitDownNotSold;
        stopIntraday += other.stopIntraday;
        return *this;
    }

    // The line shown under the summary.
    QString text() const
    {
        return QStringLiteral(
                   "规则影响: T+1 推迟卖出 %1 笔, 涨停未买入 %2 笔, 跌停未卖出 %3 笔, 盘中止损 %4 笔")
            .arg(t1Delayed)
            .arg(limitUpNotBought)
            .arg(limitDownNotSold)
            .arg(stopIntraday);
    }
};
