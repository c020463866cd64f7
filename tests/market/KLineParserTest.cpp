#include "TestSupport.h"
#include "market/DecimalNumber.h"

#include <gtest/gtest.h>

#include <QString>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <random>

namespace {

StockSeries parse(const std::string &text)
{
    StockSeries series;
    parseKLineText(text, series);
    return series;
}

} // namespace

// The service's framing, its quotes, the column order and each day's increase
// are pinned by the in-tree golden figures on the bundled data; the first
// day's increase is meaningless, no rule reads it.
TEST(KLineText, ShortItemsAreSkippedAndDoNotMoveThePreviousClose)
{
    const StockSeries s = parse("[[d1,1,10,1,1,1],[d2,1,50,1,1],[d3,1,11,1,1,1,extra,fields]]");
    ASSERT_EQ(s.size(), 2);
    EXPECT_EQ(s.bars[1].date, "d3");
    EXPECT_FLOAT_EQ(s.bars[1].change, 1.0f);
}

TEST(KLineText, BadNumbersReadZeroAndNothingBreaks)
{
    const StockSeries s = parse("[[d1, 5 ,nan,inf,1e39,abc],[d2,-0.5,+2.,.25,1e3,1e-50]]");
    ASSERT_EQ(s.size(), 2);
    EXPECT_FLOAT_EQ(s.bars[0].open, 5.0f); // surrounding blanks are ignored
    EXPECT_EQ(s.bars[0].close, 0.0f);
    EXPECT_EQ(s.bars[0].high, 0.0f);
    EXPECT_EQ(s.bars[0].low, 0.0f); // beyond the float range
    EXPECT_EQ(s.bars[0].volume, 0.0f);
    EXPECT_FLOAT_EQ(s.bars[1].open, -0.5f);
    EXPECT_FLOAT_EQ(s.bars[1].close, 2.0f);
    EXPECT_FLOAT_EQ(s.bars[1].high, 0.25f);
    EXPECT_FLOAT_EQ(s.bars[1].low, 1000.0f);
    EXPECT_EQ(s.bars[1].volume, 0.0f); // underflow
    // The ideographic space, written in GBK or in UTF-8, is white space too.
    const StockSeries wide = parse("[[d1,\xA1\xA1"
                                   "5\xA1\xA1,\xE3\x80\x80"
                                   "6,7,8,9]]");
    ASSERT_EQ(wide.size(), 1);
    EXPECT_EQ(wide.bars[0].open, 5.0f);
    EXPECT_EQ(wide.bars[0].close, 6.0f);
}

TEST(KLineText, OddShapesFollowTheSplittingRules)
{
    EXPECT_EQ(parse("").size(), 0);
    EXPECT_EQ(parse("[[]]").size(), 0);
    EXPECT_EQ(parse("no list at all").size(), 0);
    // Without "[[" the whole text is split; a leading "[" of a date is dropped.
    const StockSeries noOpen = parse("[d1,1,2,3,4,5],[d2,1,2,3,4,5");
    ASSERT_EQ(noOpen.size(), 2);
    EXPECT_EQ(noOpen.bars[0].date, "d1");
    EXPECT_EQ(noOpen.bars[1].volume, 5.0f);
    // Only the first "]]" ends the list; quotes vanish before the "],[" split.
    const StockSeries cut = parse(R"([[d1,1,2,3,4,5]"],"[d2,1,2,3,4,5]],[[d3,1,2,3,4,5]])");
    ASSERT_EQ(cut.size(), 2);
    EXPECT_EQ(cut.bars[1].date, "d2");
    // A number glued to a stray bracket is not a number.
    EXPECT_EQ(parse("[[d1,1,2,3,4,5]x]]").bars.at(0).volume, 0.0f);
}

// The fast path reads a number either checking each byte against the text's
// end or, far from it, looking ahead freely: both take the same numbers, stop
// at the same byte and give what the general conversion gives.
TEST(KLineText, FastNumberPathAgreesWithTheGeneralConversion)
{
    const auto check = [](const std::string &number) {
        const std::string padded = number + '"' + std::string(DecimalNumber::kSimpleFloatReach, '7');
        const char *begin = padded.data(), *end = begin + number.size();
        float careful = -1, ahead = -2;
        const char *stop = DecimalNumber::scanSimpleFloat(begin, end, careful);
        ASSERT_EQ(DecimalNumber::scanSimpleFloat<false>(begin, begin + padded.size(), ahead), stop) << number;
        if (stop) {
            const float general = DecimalNumber::toFloat(number);
            ASSERT_EQ(stop, end) << number;
            ASSERT_EQ(std::memcmp(&careful, &general, sizeof general), 0) << number;
            ASSERT_EQ(std::memcmp(&ahead, &general, sizeof general), 0) << number;
        }
    };
    for (const char *number :
         {"", "-", ".", "-0", "+0.0", "5.", ".25", "+.5", "1.2.3", "1e5", "16777217", "123456789012345678",
          "1234567890123456789", "0.000000000000000001", "0000000000000000000001", "9007199254740992",
          "9007199254740993", "12345678901234567890123.5"})
        check(number);
    std::mt19937_64 random(7);
    char text[64];
    for (int i = 0; i < 200000; ++i) {
        const double magnitude = std::pow(10.0, double(random() % 12) - 3);
        const double value = double(random() % 100000000) / 1e4 * magnitude;
        const int decimals = int(random() % 9);
        check({text,
               size_t(std::snprintf(text, sizeof text, "%.*f", decimals, random() % 2 ? value : -value))});
    }
}

TEST(DecimalText, FloatsAreTheDecimalRoundedToDoubleThenToFloat)
{
    // A decimal just above the halfway point between two floats, whose
    // nearest double lies exactly on that halfway point: rounding through the
    // double goes to even, a direct float conversion would round up.
    EXPECT_EQ(DecimalNumber::toFloat("1.00000005960464477550"), 1.0f);
    EXPECT_EQ(DecimalNumber::toFloat("3.4e38"), 3.4e38f);
    EXPECT_EQ(DecimalNumber::toFloat("3.5e38"), 0.0f);
}

TEST(DecimalText, IntegersReadLikeBaseTenWithBlanksAndSign)
{
    EXPECT_EQ(DecimalNumber::toInt(" 5 "), 5);
    EXPECT_EQ(DecimalNumber::toInt("+5"), 5);
    EXPECT_EQ(DecimalNumber::toInt("-12"), -12);
    EXPECT_EQ(DecimalNumber::toInt("5.0"), 0);
    EXPECT_EQ(DecimalNumber::toInt("+-5"), 0);
    EXPECT_EQ(DecimalNumber::toInt("x"), 0);
    EXPECT_EQ(DecimalNumber::toInt("2147483648"), 0);
    // Truncation itself shows in the configuration's integers; here, its bounds.
    EXPECT_EQ(DecimalNumber::toTruncatedInt(u"1e20"), 2147483647);
    EXPECT_EQ(DecimalNumber::toTruncatedInt(u"-1e20"), -2147483647 - 1);
}

TEST(KLineText, QuotedTextReadsLikeTheSameTextWithoutQuotes)
{
    // Inside the list, quotes are removed before anything else, so any list
    // and its quote-free copy must give the same days, however mangled.
    // Long enough that edits fall both far from the end and near it, where
    // items are read with different care.
    const std::string days = R"("2019-01-02","9.10","9.16","9.20","9.00","100"],)"
                             R"(["2019-01-03","9.2","9.3","9.4","9.1","200"],[)";
    const std::string base = days + days + R"("d","1","2","3","4","5")";
    const char specials[] = "\"[],.e-+ 1x";
    std::mt19937 random(11);
    int compared = 0;
    for (int round = 0; round < 20000; ++round) {
        std::string inner = base;
        for (int edits = 1 + int(random() % 3); edits > 0; --edits) {
            const size_t at = random() % inner.size();
            if (random() % 2)
                inner.insert(at, 1, specials[random() % (sizeof specials - 1)]);
            else
                inner.erase(at, 1);
        }
        std::string unquoted = inner;
        std::erase(unquoted, '"');
        const std::string text = "x=[[" + inner + "]] end", plain = "x=[[" + unquoted + "]] end";
        // The list's own brackets are found before quotes go: keep them the same.
        if (text.find("[[") != 2 || plain.find("[[") != 2 || text.find("]]") != text.size() - 6 ||
            plain.find("]]") != plain.size() - 6)
            continue;
        ++compared;
        const StockSeries a = parse(text), b = parse(plain);
        ASSERT_EQ(a.size(), b.size()) << text;
        for (int i = 0; i < a.size(); ++i) {
            const Stock &x = a.bars[size_t(i)], &y = b.bars[size_t(i)];
            ASSERT_EQ(x.date, y.date) << text;
            ASSERT_EQ(std::memcmp(&x.open, &y.open, 7 * sizeof(float)), 0) << text;
        }
    }
    EXPECT_GT(compared, 10000);
}
