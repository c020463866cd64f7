#include "SimulatedTrades.h"
#include "engine/PriceLimit.h"

#include <gtest/gtest.h>

TEST(TPlusOne, NothingBoughtIsSoldOnTheBuyDay)
{
    const QString rules = QStringLiteral("config.trade.t1,yes\nconfig.trade.max.profit,10\n");
    const Day buyDay{"b", 10, 11, 11, 10, 1}; // its close alone would take the profit
    const Day next{"n", 11, 11.2, 11.5, 11, 1};
    RuleEffects effects;
    EXPECT_EQ(simulate(rules, {kSignal, buyDay, next, kQuietEnd}, "600000", &effects),
              QStringLiteral("600000,b,10,n,11.2,2,止盈\n"));
    EXPECT_EQ(effects.t1Delayed, 1);
    // The intraday take-profit waits a day too, and then fills at the target.
    EXPECT_EQ(
        simulate(rules + QStringLiteral("config.trade.sale.rapid,yes\n"), {kSignal, buyDay, next, kQuietEnd}),
        QStringLiteral("600000,b,10,n,11,2,止盈\n"));
    // Selling at the next open already waits a day: a buy-day signal sells as without the rule.
    const QString atOpen = QStringLiteral("config.trade.sale.point,open\n");
    const std::initializer_list<Day> signalOnBuyDay = {kSignal, {"b", 10, 10, 10, 10, 7}, next, kQuietEnd};
    EXPECT_EQ(simulate(atOpen + rules, signalOnBuyDay), simulate(atOpen, signalOnBuyDay));
    EXPECT_EQ(simulate(atOpen + rules, signalOnBuyDay), QStringLiteral("600000,b,10,n,11,2,卖点\n"));
}

TEST(PriceLimits, AnOpenAtLimitUpIsNotBought)
{
    const QString rules = QStringLiteral("config.trade.limit,yes\nconfig.trade.max.allow.increase,40\n"
                                         "config.trade.max.hold.day,1\n");
    RuleEffects effects;
    EXPECT_EQ(simulate(rules, {kSignal, {"b", 11, 11, 11, 11, 1}, kQuietEnd}, "600000", &effects), QString());
    EXPECT_EQ(effects.limitUpNotBought, 1);
    EXPECT_EQ(simulate(rules, {kSignal, {"b", 10.99, 11, 11, 10.9, 1}, kQuietEnd}),
              QStringLiteral("600000,b,10.99,b,11,1,持股时间到期\n"));
}

TEST(PriceLimits, ASaleAtLimitDownWaitsForTheFirstBarOffTheLimit)
{
    const QString rules = QStringLiteral("config.trade.limit,yes\n");
    const Day bought{"b", 10, 10, 10, 10, 1};
    const Day down1{"x", 9, 9, 9, 9, 7}; // a sale signal at limit-down
    const Day down2{"y", 8.1, 8.1, 8.1, 8.1, 1};
    const Day down3{"z", 7.29, 7.29, 7.29, 7.29, 1};
    const Day off{"w", 7.5, 7.6, 7.8, 7.2, 1};
    RuleEffects effects;
    EXPECT_EQ(simulate(rules, {kSignal, bought, down1, down2, down3, off, kQuietEnd}, "600000", &effects),
              QStringLiteral("600000,b,10,w,7.6,5,卖点\n"));
    EXPECT_EQ(effects.limitDownNotSold, 1);
    // The series ends before a fill: the position is dropped like any open one.
    EXPECT_EQ(simulate(rules, {kSignal, bought, down1, down2, down3}), QString());
    // Selling at the next open: the refused open is retried at the following one.
    EXPECT_EQ(
        simulate(QStringLiteral("config.trade.sale.point,open\n") + rules,
                 {kSignal, {"b", 10, 10, 10, 10, 7}, {"x", 9, 9.5, 9.5, 9, 1}, {"y", 9.2, 9.3, 9.4, 9, 1}}),
        QStringLiteral("600000,b,10,y,9.2,3,卖点\n"));
}

TEST(PriceLimits, TheBandFollowsTheBoardTheDateAndTheStList)
{
    const QString rules =
        QStringLiteral("config.trade.limit,yes\nconfig.trade.max.allow.increase,40\n"
                       "config.trade.max.hold.day,1\nconfig.trade.limit.st,600001|000002\n");
    const auto bought = [&rules](const char *code, const char *signalDate, const char *buyDate, double open) {
        return !simulate(rules,
                         {{signalDate, 10, 10, 10, 10, 100}, {buyDate, open, open, open, open, 1}, kQuietEnd},
                         code)
                    .isEmpty();
    };
    // The growth board's band widened from 10 % to 20 % on 2020-08-24.
    EXPECT_FALSE(bought("300001", "2020-08-20", "2020-08-21", 11));
    EXPECT_TRUE(bought("300001", "2020-08-21", "2020-08-24", 11));
    EXPECT_FALSE(bought("301001", "2020-08-21", "2020-08-24", 12));
    EXPECT_TRUE(bought("688001", "2019-07-21", "2019-07-22", 11.5));
    EXPECT_TRUE(bought("830001", "2022-01-04", "2022-01-05", 12.9));
    EXPECT_FALSE(bought("830001", "2022-01-04", "2022-01-05", 13));
    EXPECT_FALSE(bought("600001", "2022-01-04", "2022-01-05", 10.5));
    EXPECT_TRUE(bought("600000", "2022-01-04", "2022-01-05", 10.5));

    TradeRules adjusted;
    adjusted.limit = TradeRules::Limit::Adjusted;
    const PriceLimit band(adjusted, QStringLiteral("600000"));
    EXPECT_TRUE(band.atLimitUp(10.96, 10, "2022-01-05"));
    EXPECT_FALSE(band.atLimitUp(10.94, 10, "2022-01-05"));
    EXPECT_TRUE(band.atLimitDown(9.04, 10, "2022-01-05"));
    // The first bar has no previous close and so no band.
    EXPECT_FALSE(band.atLimitUp(1000, 0, "2022-01-05"));
    EXPECT_FALSE(band.atLimitDown(0.01, 0, "2022-01-05"));
}

TEST(IntradayStop, FillsAtTheStopOrAtAnOpenBelowIt)
{
    const QString rules = QStringLiteral("config.trade.stop.intraday,yes\nconfig.trade.max.lost,-9\n");
    const Day bought{"b", 10, 10, 10, 10, 1};
    RuleEffects effects;
    // Touched during the day, even with a sale signal on it: sold at the stop.
    EXPECT_EQ(simulate(rules, {kSignal, bought, {"x", 9.5, 9.8, 9.6, 9, 7}, kQuietEnd}, "600000", &effects),
              QStringLiteral("600000,b,10,x,9.1,2,止损\n"));
    EXPECT_EQ(effects.stopIntraday, 1);
    // Opened below it: sold at the open.
    EXPECT_EQ(simulate(rules, {kSignal, bought, {"x", 8.5, 8.8, 8.9, 8.4, 1}, kQuietEnd}),
              QStringLiteral("600000,b,10,x,8.5,2,止损\n"));
    // Under T+1 a touch on the buy day is not a fill; the close decides the next day.
    EXPECT_EQ(simulate(QStringLiteral("config.trade.t1,yes\n") + rules,
                       {kSignal, {"b", 10, 10, 10, 9, 1}, {"x", 10, 10.2, 10.3, 9.95, 7}, kQuietEnd}),
              QStringLiteral("600000,b,10,x,10.2,2,卖点\n"));
}
