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

bool compiles(const char *term) { return compileTerm(QString::fromUtf8(term)) != nullptr; }

const StockSeries kSeries = seriesOf({{"d0", 10, 10, 10, 10, 100},
                                      {"d1", 10, 11, 12, 10, 200},
                                      {"d2", 11, 12, 13, 11, 300},
                                      {"d3", 12, 13, 14, 12, 400},
                                      {"d4", 13, 14, 15, 12.5, 500}});

// "NA" or the number (a pattern's flag as 1 or 0) the term gives on a day of kSeries.
QString valueOf(const char *term, int day)
{
    const std::unique_ptr<MetaEvalutor> evaluator = compileTerm(QString::fromUtf8(term));
    if (!evaluator)
        return QStringLiteral("does not compile");
    IndicatorCache cache;
    evaluator->bind(kSeries.view(), cache);
    EvalValue value;
    if (evaluator->value(day, value) != 1)
        return QStringLiteral("NA");
    return value.kind == EvalValue::Boolean ? QString::number(value.flag) : QString::number(value.number);
}

} // namespace

TEST(Terms, ArgumentsMustMatchEachTermsForm)
{
    for (const char *term : {"increase,0", "increase,4,0", "ma,x,-1", "ma, 5 ,0", "dmi.adx,14,6,0",
                             "value,-3", "k.旭日东升,0", "k.旭日东升,-2"})
        EXPECT_TRUE(compiles(term)) << term;
    for (const char *term :
         {"increase,0,0", "close,1,0", "ma,5", "ma,5,-1,2", "boll.mid,0,0", "dmi.adx,5,2,0", "dmi.adx,6,14,0",
          "dmi.adx,6,1,0", "value,abc", "value,nan", "Close,0", "k.旭日东升,1", "k.旭日东升"})
        EXPECT_FALSE(compiles(term)) << term;
}

TEST(Terms, OffsetsAveragesAndPatternsHaveValuesOnlyWhereTheirBarsExist)
{
    // Offsets read earlier bars; the first bar is never usable.
    EXPECT_EQ(valueOf("close,-1", 1), QStringLiteral("NA"));
    EXPECT_EQ(valueOf("close,-1", 2), QStringLiteral("11"));
    EXPECT_EQ(valueOf("close,-1", 5), QStringLiteral("14"));
    EXPECT_EQ(valueOf("close,-1", 6), QStringLiteral("NA"));
    EXPECT_EQ(valueOf("increase,2,0", 1), QStringLiteral("20")); // high 12 over the previous close 10
    EXPECT_EQ(valueOf("swing,0", 4), QStringLiteral("20"));      // (15 - 12.5) / 12.5
    // Averages have no value before their period, nor for a period below one.
    EXPECT_EQ(valueOf("ma,3,0", 1), QStringLiteral("NA"));
    EXPECT_EQ(valueOf("ma,3,0", 2), QStringLiteral("11"));
    EXPECT_EQ(valueOf("ma,0,0", 3), QStringLiteral("NA"));
    EXPECT_EQ(valueOf("volma,2,-1", 4), QStringLiteral("350"));
    // Three rising bars end on day 2; a negative offset looks ahead, and past
    // the end judges the whole series.
    EXPECT_EQ(valueOf("k.红三兵,0", 1), QStringLiteral("NA"));
    EXPECT_EQ(valueOf("k.红三兵,0", 2), QStringLiteral("1"));
    EXPECT_EQ(valueOf("k.红三兵,-1", 1), QStringLiteral("1"));
    EXPECT_EQ(valueOf("k.红三兵,-1", 4), QStringLiteral("1"));
}

TEST(Numbers, ReadThroughAnyWhiteSpaceAndBelowTheSmallestDouble)
{
    // Spaces a Chinese input method or a copied web page leaves around a number.
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
