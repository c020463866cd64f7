#include "TestSupport.h"
#include "script/Script.h"

#include <gtest/gtest.h>

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
