#include "SimulatedTrades.h"

#include <gtest/gtest.h>

TEST(Buying, AGapExactlyAtEitherBoundStillBuys)
{
    const QString rules =
        QStringLiteral("config.trade.max.allow.increase,5\nconfig.trade.max.allow.decrease,-5\n"
                       "config.trade.max.hold.day,1\n");
    EXPECT_EQ(simulate(rules, {kSignal, {"b", 10.5, 10.5, 10.5, 10.5, 1}, kQuietEnd}),
              QStringLiteral("600000,b,10.5,b,10.5,1,持股时间到期\n"));
    EXPECT_EQ(simulate(rules, {kSignal, {"b", 9.5, 9.5, 9.5, 9.5, 1}, kQuietEnd}),
              QStringLiteral("600000,b,9.5,b,9.5,1,持股时间到期\n"));
    EXPECT_EQ(simulate(rules, {kSignal, {"b", 10.51, 9.5, 10.6, 9.5, 1}, kQuietEnd}), QString());
}

TEST(Buying, TheLastBarsSignalWaitsAndAPositionOpenOnTheLastBarVanishes)
{
    EXPECT_EQ(simulate({}, {{"x", 10, 10, 10, 10, 1}, {"last", 10, 10, 10, 10, 100}}),
              QStringLiteral("600000,last下一日开盘买入,0,,0,1,待买入\n"));
    EXPECT_EQ(simulate({}, {kSignal, {"last", 10, 10, 10, 10, 1}}), QString());
}

TEST(Selling, ThresholdsAreInclusiveAndCheckedInOrder)
{
    const QString rules = QStringLiteral("config.trade.max.profit,10\nconfig.trade.max.lost,-10\n");
    EXPECT_EQ(simulate(rules, {kSignal, {"b", 10, 11, 11, 10, 1}, kQuietEnd}),
              QStringLiteral("600000,b,10,b,11,1,止盈\n"));
    EXPECT_EQ(simulate(rules, {kSignal, {"b", 10, 9, 10, 9, 1}, kQuietEnd}),
              QStringLiteral("600000,b,10,b,9,1,止损\n"));
    // A sale signal on the same day wins over the take-profit.
    EXPECT_EQ(simulate(rules, {kSignal, {"b", 10, 11, 11, 10, 7}, kQuietEnd}),
              QStringLiteral("600000,b,10,b,11,1,卖点\n"));
    // Held until the limit of days: 1 on the buy day itself, sold on the third.
    const std::initializer_list<Day> held = {{"s", 10, 10, 10, 10, 100},
                                             {"b", 10, 10, 10, 10, 1},
                                             {"h", 10, 10, 10, 10, 1},
                                             {"x", 10, 10.5, 10.5, 10, 1},
                                             {"e", 10, 10, 10, 10, 1}};
    EXPECT_EQ(simulate(QStringLiteral("config.trade.max.hold.day,3\n"), held),
              QStringLiteral("600000,b,10,x,10.5,3,持股时间到期\n"));
}

TEST(Selling, RapidTakeProfitSellsAtTheTargetPriceOnTheDay)
{
    const QString rules = QStringLiteral("config.trade.max.profit,10\nconfig.trade.sale.rapid,yes\n");
    EXPECT_EQ(simulate(rules, {kSignal, {"b", 10, 10.2, 11, 10, 1}, kQuietEnd}),
              QStringLiteral("600000,b,10,b,11,1,止盈\n"));
}

TEST(Selling, AtTheNextOpenCountsOneMoreDay)
{
    const QString rules = QStringLiteral("config.trade.sale.point,open\n");
    EXPECT_EQ(simulate(rules, {kSignal, {"b", 10, 10, 10, 10, 7}, {"n", 10.3, 10, 10, 10, 1}}),
              QStringLiteral("600000,b,10,n,10.3,2,卖点\n"));
}

TEST(Selling, DaysAfterASaleAreSkippedMinExcludeTimes)
{
    const std::initializer_list<Day> days = {{"s", 10, 10, 10, 10, 100}, {"b", 10, 10, 10, 10, 107},
                                             {"c", 10, 10, 10, 10, 100}, {"d", 10, 10, 10, 10, 1},
                                             {"e", 10, 10, 10, 10, 7},   {"f", 10, 10, 10, 10, 1}};
    // Sold on "b" (volume 107 is a buy and a sale signal); "c" may buy again.
    const QString noWait = simulate(QStringLiteral("config.trade.min.exclude,0\n"), days);
    EXPECT_EQ(noWait, QStringLiteral("600000,b,10,b,10,1,卖点\n600000,d,10,e,10,2,卖点\n"));
    // Skipping "c" leaves no signal until the end.
    EXPECT_EQ(simulate(QStringLiteral("config.trade.min.exclude,1\n"), days),
              QStringLiteral("600000,b,10,b,10,1,卖点\n"));
    EXPECT_EQ(simulate(QStringLiteral("config.trade.min.exclude,-3\n"), days), noWait);
}
