#include "TestSupport.h"
#include "script/Script.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <memory>

namespace {

// The compile result and the reported line, as "result:line".
QString compile(const QString &text)
{
    Script script;
    StrategyConfig config;
    int line = 0;
    const int result = compileScript(script, config, text, line);
    return QStringLiteral("%1:%2").arg(result).arg(result == 1 ? 0 : line);
}

// `text` compiled (it must compile) and bound to `series`.
std::unique_ptr<Script> boundScript(const QString &text, const StockSeries &series)
{
    auto script = std::make_unique<Script>();
    StrategyConfig config;
    int line = 0;
    EXPECT_EQ(compileScript(*script, config, text, line), 1) << line;
    IndicatorCache cache;
    script->bind(series.view(), cache);
    return script;
}

} // namespace

TEST(Compiling, CommentsAndConfigurationNeedABuyStatement)
{
    EXPECT_EQ(compile(QStringLiteral("#config.trade.max.count,9\n//buy.close,0<open,0\n/x\n"
                                     "config.unknown.key,1\nbuy.close,0>open,0")),
              QStringLiteral("1:0"));
    EXPECT_EQ(compile(QStringLiteral("# only\nconfig.trade.max.count,2")), QStringLiteral("-1:-1"));
    EXPECT_EQ(compile(QStringLiteral("buy.k.旭日东升,0|close,-1<ma,5,-1\nsale.close,0<ma,10,0")),
              QStringLiteral("1:0"));
}

TEST(Compiling, ConfigurationLinesApplyAsTheyAreCompiled)
{
    Script script;
    StrategyConfig config;
    int line = 0;
    compileScript(script, config,
                  QStringLiteral("config.trade.max.count,5\nbuy.close,0>open,0\nconfig.trade.max.count,x,y"),
                  line);
    EXPECT_EQ(line, 3);
    EXPECT_EQ(config.maxCount, 5);
}

TEST(Signals, BuyLinesAllMustHoldSaleLinesAnyAndAlternativesAny)
{
    // Day 1 rises (close > open), day 2 falls, day 3 is flat.
    const StockSeries s = seriesOf({{"d0", 10, 10, 10, 10, 1},
                                    {"d1", 10, 11, 11, 10, 1},
                                    {"d2", 11, 10, 11, 10, 1},
                                    {"d3", 10, 10, 10, 10, 1}});
    const auto script =
        boundScript(QStringLiteral("buy.close,0>open,0\nbuy.value,5<close,0\n"
                                   "sale.close,0<open,0|value,1>value,2\nsale.value,1>value,2"),
                    s);
    EXPECT_TRUE(script->isBuy(1));
    EXPECT_FALSE(script->isBuy(2));
    EXPECT_FALSE(script->isBuy(3)); // equal is neither greater nor less
    EXPECT_FALSE(script->isSale(1));
    EXPECT_TRUE(script->isSale(2));
    EXPECT_FALSE(script->isSale(3));
    EXPECT_FALSE(script->isBuy(0)); // the first bar is never usable
}

TEST(Signals, APatternComparedAsANumberReadsZero)
{
    const StockSeries s = seriesOf({{"d0", 10, 10, 10, 10, 1},
                                    {"d1", 10, 11, 11, 10, 1},
                                    {"d2", 11, 12, 12, 11, 1},
                                    {"d3", 12, 13, 13, 12, 1}});
    const auto script = boundScript(QStringLiteral("buy.value,5>k.红三兵,0\nbuy.close,0>k.红三兵,0"), s);
    EXPECT_TRUE(script->isBuy(3));
    EXPECT_FALSE(script->isBuy(1)); // the pattern has no value before its third bar
}

TEST(Signals, AWholeStockAtOnceMatchesDayByDay)
{
    // A wandering price with a zero low (an infinite swing) and a zero close
    // (an infinite increase the day after) among its days.
    std::vector<Day> days;
    unsigned seed = 12345;
    double price = 10;
    for (int i = 0; i < 120; ++i) {
        seed = seed * 1103515245u + 12345u;
        price = std::max(1.0, price + double(int(seed >> 16) % 101 - 50) / 100);
        const double low = i == 40 ? 0 : price - 0.3;
        days.push_back({"d", price - 0.1, i == 70 ? 0 : price, price + 0.4, low, double(seed % 1000)});
    }
    const StockSeries s = seriesOf(days);
    const char *terms[] = {"close,0",   "open,-1",     "high,2",         "low,0",         "vol,-3",
                           "increase,0", "increase,3,-1", "swing,0",     "ma,5,0",        "ma,10,-1",
                           "ema,12,0",  "volma,5,1",   "macd.bar,0",     "kdj.j,-1",      "boll.upper,0",
                           "dmi.adx,14,6,0", "value,10", "close,400",    "close,-2147483647"};
    const int count = int(std::size(terms));
    for (int a = 0; a < count; ++a) {
        const int b = (a * 7 + 3) % count, c = (a * 5 + 1) % count;
        const QString script = QStringLiteral("buy.%1>%2|k.旭日东升,%4\nbuy.%2<%3\nsale.%3>%1|%1<%2\nsale.%2>%3")
                                   .arg(QLatin1String(terms[a]), QLatin1String(terms[b]), QLatin1String(terms[c]))
                                   .arg(-(a % 3));
        const auto bound = boundScript(script, s);
        std::vector<unsigned char> buy(days.size()), sale(days.size());
        DayColumns columns;
        bound->buyDays(0, int(days.size()), buy.data(), columns);
        bound->saleDays(0, int(days.size()), sale.data(), columns);
        for (int day = 0; day < int(days.size()); ++day) {
            ASSERT_EQ(bool(buy[size_t(day)]), bound->isBuy(day)) << script.toStdString() << " day " << day;
            ASSERT_EQ(bool(sale[size_t(day)]), bound->isSale(day)) << script.toStdString() << " day " << day;
        }
    }
}
