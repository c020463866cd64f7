#include "TestSupport.h"
#include "engine/OutputCsv.h"
#include "engine/StockSimulator.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

// Days 0-4 only feed the indicators; the walk starts on day 5.
std::vector<Day> warmUp()
{
    return {{"d0", 10, 10, 10, 10, 1},
            {"d1", 10, 10, 10, 10, 1},
            {"d2", 10, 10, 10, 10, 1},
            {"d3", 10, 10, 10, 10, 1},
            {"d4", 10, 10, 10, 10, 1}};
}

// The trades, as "output.csv" lines, of `rules` over five quiet warm-up days
// followed by `days`. A day with volume 100 or more signals a buy, one with
// volume above 6 a sale.
QString simulate(const QString &rules, std::initializer_list<Day> days)
{
    std::vector<Day> all = warmUp();
    all.insert(all.end(), days.begin(), days.end());
    std::string text = "[[";
    for (size_t i = 0; i < all.size(); ++i) {
        const Day &d = all[i];
        text += (i ? "],[" : "") + std::string(d.date) + "," + std::to_string(d.open) + "," +
                std::to_string(d.close) + "," + std::to_string(d.high) + "," + std::to_string(d.low) + "," +
                std::to_string(d.volume);
    }
    StockSeries series;
    parseKLineText(text + "]]", series);
    series.code = QStringLiteral("600000");

    StrategyConfig config;
    config.salePoint = SalePoint::Close;
    Script script;
    int line = 0;
    const QString signalRules = QStringLiteral("buy.vol,0>value,99\nsale.vol,0>value,6");
    EXPECT_EQ(compileScript(script, config, rules + signalRules, line), 1) << line;
    IndicatorCache cache;
    script.bind(series.view(), cache);
    std::vector<TradeRecord> trades;
    StockSimulator(config).simulateStock(series, script, trades);
    TradeBook book;
    for (const TradeRecord &t : trades)
        book.file(t);
    return outputCsvText(book);
}

} // namespace

TEST(Buying, AGapExactlyAtEitherBoundStillBuys)
{
    const QString rules =
        QStringLiteral("config.trade.max.allow.increase,5\nconfig.trade.max.allow.decrease,-5\n"
                       "config.trade.max.hold.day,1\n");
    EXPECT_EQ(
        simulate(rules, {{"s", 10, 10, 10, 10, 100}, {"b", 10.5, 10.5, 10.5, 10.5, 1}, {"e", 1, 1, 1, 1, 1}}),
        QStringLiteral("600000,b,10.5,b,10.5,1,持股时间到期\n"));
    EXPECT_EQ(
        simulate(rules, {{"s", 10, 10, 10, 10, 100}, {"b", 9.5, 9.5, 9.5, 9.5, 1}, {"e", 1, 1, 1, 1, 1}}),
        QStringLiteral("600000,b,9.5,b,9.5,1,持股时间到期\n"));
    EXPECT_EQ(
        simulate(rules, {{"s", 10, 10, 10, 10, 100}, {"b", 10.51, 9.5, 10.6, 9.5, 1}, {"e", 1, 1, 1, 1, 1}}),
        QString());
}

TEST(Buying, TheLastBarsSignalWaitsAndAPositionOpenOnTheLastBarVanishes)
{
    EXPECT_EQ(simulate({}, {{"x", 10, 10, 10, 10, 1}, {"last", 10, 10, 10, 10, 100}}),
              QStringLiteral("600000,last下一日开盘买入,0,,0,1,待买入\n"));
    EXPECT_EQ(simulate({}, {{"s", 10, 10, 10, 10, 100}, {"last", 10, 10, 10, 10, 1}}), QString());
}

TEST(Selling, ThresholdsAreInclusiveAndCheckedInOrder)
{
    const QString rules = QStringLiteral("config.trade.max.profit,10\nconfig.trade.max.lost,-10\n");
    const Day signal{"s", 10, 10, 10, 10, 100};
    const Day end{"e", 10, 10, 10, 10, 1};
    EXPECT_EQ(simulate(rules, {signal, {"b", 10, 11, 11, 10, 1}, end}),
              QStringLiteral("600000,b,10,b,11,1,止盈\n"));
    EXPECT_EQ(simulate(rules, {signal, {"b", 10, 9, 10, 9, 1}, end}),
              QStringLiteral("600000,b,10,b,9,1,止损\n"));
    // A sale signal on the same day wins over the take-profit.
    EXPECT_EQ(simulate(rules, {signal, {"b", 10, 11, 11, 10, 7}, end}),
              QStringLiteral("600000,b,10,b,11,1,卖点\n"));
    // Held until the limit of days: 1 on the buy day itself, sold on the third.
    EXPECT_EQ(
        simulate(
            QStringLiteral("config.trade.max.hold.day,3\n"),
            {signal, {"b", 10, 10, 10, 10, 1}, {"h", 10, 10, 10, 10, 1}, {"x", 10, 10.5, 10.5, 10, 1}, end}),
        QStringLiteral("600000,b,10,x,10.5,3,持股时间到期\n"));
}

TEST(Selling, RapidTakeProfitSellsAtTheTargetPriceOnTheDay)
{
    const QString rules = QStringLiteral("config.trade.max.profit,10\nconfig.trade.sale.rapid,yes\n");
    EXPECT_EQ(
        simulate(rules, {{"s", 10, 10, 10, 10, 100}, {"b", 10, 10.2, 11, 10, 1}, {"e", 10, 10, 10, 10, 1}}),
        QStringLiteral("600000,b,10,b,11,1,止盈\n"));
}

TEST(Selling, AtTheNextOpenCountsOneMoreDay)
{
    const QString rules = QStringLiteral("config.trade.sale.point,open\n");
    EXPECT_EQ(
        simulate(rules, {{"s", 10, 10, 10, 10, 100}, {"b", 10, 10, 10, 10, 7}, {"n", 10.3, 10, 10, 10, 1}}),
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
