#include "indicators/KPatternTable.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace {

Stock bar(float open, float close, float high, float low, float increase = 0)
{
    Stock s;
    s.open = open;
    s.close = close;
    s.high = high;
    s.low = low;
    s.increase = increase;
    return s;
}

bool holds(const char *name, const std::vector<Stock> &bars)
{
    const KPatternRecognizer recognize = KPatternTable::find(QString::fromUtf8(name));
    EXPECT_NE(recognize, nullptr) << name;
    return recognize && recognize(bars);
}

} // namespace

// The evaluator hands a pattern three bars or more; a single-bar pattern reads
// only the last of them, so one bar is enough to judge it here.
TEST(Patterns, LimitRowsUseTheirBandsAndTheOnePriceRowsNeedAFlatBar)
{
    const float limit = float(10.0f * 1.1);
    EXPECT_TRUE(holds("k.一字涨停", {bar(10, 10, 10, 10), bar(limit, limit, limit, limit)}));
    EXPECT_FALSE(holds("k.涨停", {bar(10, 10, 10, 10), bar(limit, limit, limit, limit)}));
    EXPECT_TRUE(holds("k.涨停", {bar(10, 10, 10, 10), bar(10.5f, 11.005f, 11.005f, 10.4f)}));
    EXPECT_FALSE(holds("k.涨停", {bar(10, 10, 10, 10), bar(10.5f, 11.007f, 11.007f, 10.4f)}));
}

TEST(Patterns, PricesWithinATenThousandthAreEqual)
{
    EXPECT_TRUE(holds("k.光头阳线", {bar(10, 11.0f, 11.00009f, 9)}));
    EXPECT_FALSE(holds("k.光头阳线", {bar(10, 11.0f, 11.0002f, 9)}));
}

TEST(Patterns, DojiAndHammersOnAZeroBody)
{
    EXPECT_TRUE(holds("k.十字星", {bar(10, 10, 10.5f, 9.5f)}));
    EXPECT_FALSE(holds("k.十字星", {bar(10, 10, 10, 9.5f)}));
    EXPECT_FALSE(holds("k.锤子线", {bar(10, 10, 10, 9.5f)}));
    EXPECT_FALSE(holds("k.倒锤子线", {bar(10, 10, 10.5f, 10)}));
    EXPECT_TRUE(holds("k.十字星", {bar(10, 10.1f, 10.5f, 9.5f)})); // a real body, long shadows
}

TEST(Patterns, ShadowRatioOfTinyAndEmptyBodies)
{
    EXPECT_EQ(KPatternTable::shadowRatio(bar(10, 10.01f, 10.05f, 9.95f)), 0.0f);
    EXPECT_EQ(KPatternTable::shadowRatio(bar(10, 10, 10.1f, 9.9f)), std::numeric_limits<float>::infinity());
    EXPECT_FALSE(KPatternTable::isSolidBody(bar(10, 10.1f, 10.2f, 9.9f)));
    EXPECT_TRUE(KPatternTable::isSolidBody(bar(10, 10.5f, 10.6f, 9.9f)));
}

TEST(Patterns, EveningStarNeedsFourBars)
{
    const Stock rise = bar(10, 10.6f, 10.6f, 10, 6.0f);
    const Stock star = bar(10.7f, 10.7f, 10.9f, 10.5f);
    const Stock fall = bar(10.6f, 10.0f, 10.6f, 10.0f);
    EXPECT_FALSE(holds("k.黄昏之星", {rise, star, fall}));
    EXPECT_TRUE(holds("k.黄昏之星", {bar(9, 9, 9, 9), rise, star, fall}));
}
