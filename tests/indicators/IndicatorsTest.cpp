#include "indicators/BollIndicator.h"
#include "indicators/KDJIndicator.h"
#include "indicators/MaNIndicator.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

Stock bar(float close, float high = 0, float low = 0)
{
    Stock s;
    s.open = s.close = close;
    s.high = high ? high : close;
    s.low = low ? low : close;
    return s;
}

std::vector<IndicatorValue> run(StockIndicator &indicator, const std::vector<Stock> &bars)
{
    std::vector<IndicatorValue> results;
    for (const Stock &b : bars)
        results.push_back(indicator.next(b));
    return results;
}

} // namespace

// The usual warm-up and values of every indicator are pinned by the in-tree
// golden figures; these are the cases real data seldom reaches.
TEST(Kdj, AFlatWindowClampsToZero)
{
    KDJIndicator flat; // high = low: RSV is 0/0
    const auto f = run(flat, std::vector<Stock>(9, bar(10)));
    EXPECT_TRUE(f[8].valid);
    EXPECT_EQ(f[8].value1, 0.0f);
    EXPECT_EQ(f[8].value2, 0.0f);
}

TEST(Boll, EqualClosesCollapseTheBands)
{
    BollIndicator boll;
    const auto r = run(boll, std::vector<Stock>(20, bar(12.5f)));
    EXPECT_FALSE(r[18].valid);
    EXPECT_TRUE(r[19].valid);
    EXPECT_EQ(r[19].value2, 0.0f);
    EXPECT_EQ(r[19].value1, 12.5f * 20 * 0.05f);
}

TEST(Averages, WholeSeriesAveragesMatchBarByBarOnes)
{
    std::vector<Stock> bars;
    std::vector<float> closes;
    for (int i = 0; i < 300; ++i) {
        bars.push_back(bar(float(i * 7919 % 1013) / 37.0f + 3));
        closes.push_back(bars.back().close);
    }
    for (const int period : {1, 2, 5, 13, 60, 299, 300, 301}) {
        MaNIndicator streaming(period);
        std::vector<float> batch;
        WindowAverageIndicator::averages(closes, period, batch);
        for (size_t i = 0; i < bars.size(); ++i) {
            const IndicatorValue v = streaming.next(bars[i]);
            ASSERT_EQ(v.valid, i + 1 >= size_t(period)) << period;
            ASSERT_EQ(v.value1, batch[i]) << period << " " << i;
        }
    }
}
