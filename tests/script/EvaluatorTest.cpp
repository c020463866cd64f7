#include "TestSupport.h"
#include "indicators/IndicatorCache.h"
#include "script/MetaEvalutor.h"
#include "script/StrategyConfig.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

std::unique_ptr<MetaEvalutor> compileTerm(const QString &term)
{
    std::unique_ptr<MetaEvalutor> evaluator = createEvaluator(term.section(QLatin1Char(','), 0, 0));
    if (!evaluator || !evaluator->parse(term))
        return nullptr;
    return evaluator;
}

void bindTo(MetaEvalutor &term, StockBars bars)
{
    IndicatorCache cache;
    term.bind(bars, cache);
}

bool compiles(const char *term) { return compileTerm(QString::fromUtf8(term)) != nullptr; }

// "NA" or the number the term gives on a day.
QString valueOn(MetaEvalutor &evaluator, int day)
{
    EvalValue value;
    if (evaluator.value(day, value) != 1)
        return QStringLiteral("NA");
    return value.kind == EvalValue::Boolean ? QString::number(value.flag) : QString::number(value.number);
}

const StockSeries kSeries = seriesOf({{"d0", 10, 10, 10, 10, 100},
                                      {"d1", 10, 11, 12, 10, 200},
                                      {"d2", 11, 12, 13, 11, 300},
                                      {"d3", 12, 13, 14, 12, 400},
                                      {"d4", 13, 14, 15, 12.5, 500}});

} // namespace

TEST(Terms, ArgumentsMustMatchEachTermsForm)
{
    EXPECT_TRUE(compiles("increase,0"));
    EXPECT_TRUE(compiles("increase,4,0"));
    EXPECT_FALSE(compiles("increase,0,0"));
    EXPECT_FALSE(compiles("close,1,0"));
    EXPECT_FALSE(compiles("ma,5"));
    EXPECT_FALSE(compiles("ma,5,-1,2"));
    EXPECT_TRUE(compiles("ma,x,-1"));
    EXPECT_TRUE(compiles("ma, 5 ,0"));
    EXPECT_FALSE(compiles("boll.mid,0,0"));
    EXPECT_TRUE(compiles("dmi.adx,14,6,0"));
    EXPECT_FALSE(compiles("dmi.adx,5,2,0"));
    EXPECT_FALSE(compiles("dmi.adx,6,14,0"));
    EXPECT_FALSE(compiles("dmi.adx,6,1,0"));
    EXPECT_TRUE(compiles("value,-3"));
    EXPECT_FALSE(compiles("value,abc"));
    EXPECT_FALSE(compiles("value,nan"));
    EXPECT_FALSE(compiles("Close,0"));
    EXPECT_TRUE(compiles("k.旭日东升,0"));
    EXPECT_TRUE(compiles("k.旭日东升,-2"));
    EXPECT_FALSE(compiles("k.旭日东升,1"));
    EXPECT_FALSE(compiles("k.旭日东升"));
}

TEST(Terms, OffsetsReadEarlierBarsAndTheFirstBarIsNeverUsable)
{
    auto close = compileTerm(QStringLiteral("close,-1"));
    bindTo(*close, kSeries.view());
    EXPECT_EQ(valueOn(*close, 1), QStringLiteral("NA"));
    EXPECT_EQ(valueOn(*close, 2), QStringLiteral("11"));
    EXPECT_EQ(valueOn(*close, 5), QStringLiteral("14"));
    EXPECT_EQ(valueOn(*close, 6), QStringLiteral("NA"));

    auto increase = compileTerm(QStringLiteral("increase,2,0"));
    bindTo(*increase, kSeries.view());
    EXPECT_EQ(valueOn(*increase, 1), QStringLiteral("20")); // high 12 over the previous close 10
    auto swing = compileTerm(QStringLiteral("swing,0"));
    bindTo(*swing, kSeries.view());
    EXPECT_EQ(valueOn(*swing, 4), QStringLiteral("20")); // (15 - 12.5) / 12.5
}

TEST(Terms, AveragesHaveNoValueBeforeTheirPeriodNorForAPeriodBelowOne)
{
    auto ma = compileTerm(QStringLiteral("ma,3,0"));
    bindTo(*ma, kSeries.view());
    EXPECT_EQ(valueOn(*ma, 1), QStringLiteral("NA"));
    EXPECT_EQ(valueOn(*ma, 2), QStringLiteral("11"));
    auto none = compileTerm(QStringLiteral("ma,0,0"));
    bindTo(*none, kSeries.view());
    EXPECT_EQ(valueOn(*none, 3), QStringLiteral("NA"));
    auto volume = compileTerm(QStringLiteral("volma,2,-1"));
    bindTo(*volume, kSeries.view());
    EXPECT_EQ(valueOn(*volume, 4), QStringLiteral("350"));
}

TEST(Terms, PatternOffsetsLookAheadAndNeedThreeBars)
{
    // Three rising bars end on day 3: a red-three-soldiers pattern there.
    auto today = compileTerm(QStringLiteral("k.红三兵,0"));
    auto tomorrow = compileTerm(QStringLiteral("k.红三兵,-1"));
    bindTo(*today, kSeries.view());
    bindTo(*tomorrow, kSeries.view());
    EXPECT_EQ(valueOn(*today, 1), QStringLiteral("NA"));
    EXPECT_EQ(valueOn(*today, 2), QStringLiteral("1"));
    EXPECT_EQ(valueOn(*tomorrow, 1), QStringLiteral("1")); // judges the pattern ending on day 2
    EXPECT_EQ(valueOn(*tomorrow, 4), QStringLiteral("1")); // past the end: the whole series
}

TEST(Numbers, ReadThroughAnyWhiteSpaceAndBelowTheSmallestDouble)
{
    // Spaces a Chinese input method or a copied web page leaves around a number.
    const auto valueOf = [](const char *term, int day) {
        auto evaluator = compileTerm(QString::fromUtf8(term));
        if (!evaluator)
            return QStringLiteral("does not compile");
        bindTo(*evaluator, kSeries.view());
        return valueOn(*evaluator, day);
    };
    EXPECT_EQ(valueOf("close,\u3000-1", 2), QStringLiteral("11"));
    EXPECT_EQ(valueOf("close,\u2028-1\u0085", 2), QStringLiteral("11"));
    EXPECT_EQ(valueOf("ma,\u30005,0", 4), QStringLiteral("12"));
    EXPECT_EQ(valueOf("value,\u00A09", 0), QStringLiteral("9"));
    EXPECT_EQ(valueOf("value,\u20039.5\u3000", 0), QStringLiteral("9.5"));
    EXPECT_EQ(valueOf("value,\u3000", 0), QStringLiteral("does not compile"));
    EXPECT_EQ(valueOf("value,\uFF19", 0), QStringLiteral("does not compile")); // a full-width digit

    EXPECT_EQ(valueOf("value,1e-400", 0), QStringLiteral("0"));
    EXPECT_EQ(valueOf("value,2.4e-324", 0), QStringLiteral("0"));
    EXPECT_EQ(valueOf("value,2.5e-324", 0), QString::number(4.9406564584124654e-324));
    EXPECT_EQ(valueOf("value,0.0001e-99999999999999999999", 0), QStringLiteral("0"));
    EXPECT_EQ(valueOf("value,1e400", 0), QStringLiteral("does not compile"));
    EXPECT_EQ(valueOf("value,0.1e310", 0), QStringLiteral("does not compile"));

    StrategyConfig config;
    config.parseConfigLine(QStringLiteral("config.trade.max.count,\u00A02"));
    config.parseConfigLine(QStringLiteral("config.trade.max.hold.day,\u30004.7\u2003"));
    config.parseConfigLine(QStringLiteral("config.trade.max.profit,\u300064.5"));
    config.parseConfigLine(QStringLiteral("config.trade.max.lost,-1e-400"));
    EXPECT_EQ(config.maxCount, 2);
    EXPECT_EQ(config.maxHoldDay, 4);
    EXPECT_EQ(config.maxProfit, 64.5f);
    EXPECT_EQ(config.maxLost, 0.0f);
}
