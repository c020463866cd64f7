#include "KPatternTable.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace {

constexpr double kPriceTolerance = 0.0001;

bool isNear(double a, double b, double tolerance) { return std::fabs(a - b) < tolerance; }
bool equalPrice(float a, float b) { return isNear(a, b, kPriceTolerance); }

bool yang(const Stock &b) { return b.close > b.open; }
bool yin(const Stock &b) { return b.close < b.open; }
float top(const Stock &b) { return std::max(b.open, b.close); }
float bottom(const Stock &b) { return std::min(b.open, b.close); }
float body(const Stock &b) { return top(b) - bottom(b); }
float upperShadow(const Stock &b) { return b.high - top(b); }
float lowerShadow(const Stock &b) { return bottom(b) - b.low; }

// Bar k counted back from the bar under test (0 = the last of the prefix).
struct Bars {
    StockBars prefix;
    const Stock &operator[](size_t back) const { return prefix[prefix.size() - 1 - back]; }
    size_t n() const { return prefix.size(); }
};

bool nearLimit(const Bars &b, double factor, double band)
{
    const double limit = b[1].close * factor;
    return limit - band <= b[0].close && b[0].close <= limit + band;
}

using KPatternTable::isSolidBody;
using KPatternTable::shadowRatio;

// Rows without a guard on n still refuse an empty prefix.
bool upperGap(const Bars &b) { return b.n() >= 2 && b[1].low > b[0].high; }
bool lowerGap(const Bars &b) { return b.n() >= 2 && b[0].low > b[1].high; }
bool shavenHeadYang(const Bars &b)
{
    return b.n() >= 1 && equalPrice(b[0].close, b[0].high) && b[0].close > b[0].open;
}
bool shavenFootYang(const Bars &b)
{
    return b.n() >= 1 && equalPrice(b[0].open, b[0].low) && b[0].close > b[0].open;
}
bool shavenYang(const Bars &b)
{
    return b.n() >= 1 && equalPrice(b[0].close, b[0].high) && b[0].close > b[0].open &&
           equalPrice(b[0].open, b[0].low);
}
bool shavenHeadYin(const Bars &b)
{
    return b.n() >= 1 && equalPrice(b[0].open, b[0].high) && b[0].close < b[0].open;
}
// Compares the open, not the close, with the low: kept as the rule.
bool shavenFootYin(const Bars &b)
{
    return b.n() >= 1 && equalPrice(b[0].open, b[0].low) && b[0].close < b[0].open;
}
bool shavenYin(const Bars &b)
{
    return b.n() >= 1 && equalPrice(b[0].close, b[0].low) && b[0].close < b[0].open &&
           equalPrice(b[0].open, b[0].high);
}
bool limitUp(const Bars &b)
{
    return b.n() >= 2 && !equalPrice(b[0].high, b[0].low) && nearLimit(b, 1.1, 0.006) &&
           equalPrice(b[0].close, b[0].high);
}
// Asks the close to equal the high, as the limit-up row does: kept as the rule.
bool limitDown(const Bars &b)
{
    return b.n() >= 2 && !equalPrice(b[0].high, b[0].low) && nearLimit(b, 0.9, 0.006) &&
           equalPrice(b[0].close, b[0].high);
}
bool onePriceLimitDown(const Bars &b)
{
    return b.n() >= 2 && nearLimit(b, 0.9, 0.005) && equalPrice(b[0].low, b[0].high);
}
bool onePriceLimitUp(const Bars &b)
{
    return b.n() >= 2 && nearLimit(b, 1.1, 0.005) && equalPrice(b[0].low, b[0].high);
}
bool doji(const Bars &b)
{
    return b.n() >= 1 && upperShadow(b[0]) > 2 * body(b[0]) && lowerShadow(b[0]) > 2 * body(b[0]);
}
bool hammer(const Bars &b)
{
    return b.n() >= 1 && upperShadow(b[0]) < 0.5 * body(b[0]) && lowerShadow(b[0]) > 2 * body(b[0]);
}
bool invertedHammer(const Bars &b)
{
    return b.n() >= 1 && upperShadow(b[0]) > 2 * body(b[0]) && lowerShadow(b[0]) < 0.5 * body(b[0]);
}
bool threeRedSoldiers(const Bars &b)
{
    return b.n() >= 3 && b[0].close >= b[0].open && b[1].close >= b[1].open && b[2].close >= b[2].open &&
           b[0].close > b[1].close && b[1].close > b[2].close;
}
bool threeBlackCrows(const Bars &b)
{
    return b.n() >= 3 && b[0].close <= b[0].open && b[1].close <= b[1].open && b[2].close <= b[2].open &&
           b[0].close < b[1].close && b[1].close < b[2].close;
}
bool risingSun(const Bars &b)
{
    return b.n() >= 3 && yang(b[0]) && yin(b[1]) && b[0].open > b[1].close && b[0].close > b[1].open;
}
bool yangEmbracesYang(const Bars &b)
{
    return b.n() >= 3 && isSolidBody(b[1]) && isSolidBody(b[0]) && yang(b[0]) && yang(b[1]) &&
           b[0].low < b[1].low && b[0].high > b[1].high;
}
bool yinEmbracesYin(const Bars &b)
{
    return b.n() >= 3 && isSolidBody(b[1]) && isSolidBody(b[0]) && yin(b[0]) && yin(b[1]) &&
           b[0].high > b[1].high && b[0].low < b[1].low;
}
bool darkCloudCover(const Bars &b)
{
    return b.n() >= 3 && isSolidBody(b[1]) && yang(b[1]) && b[0].open > b[1].close && yin(b[0]) &&
           isSolidBody(b[0]) && b[0].open >= b[1].high;
}
bool exhaustedRise(const Bars &b)
{
    return b.n() >= 3 && isSolidBody(b[1]) && yang(b[1]) && b[0].low > b[1].close && !isSolidBody(b[0]) &&
           bottom(b[0]) >= b[1].close && top(b[0]) < b[1].high;
}
bool pouringRain(const Bars &b)
{
    return b.n() >= 3 && isSolidBody(b[1]) && yang(b[1]) && b[0].open < b[1].close && isSolidBody(b[0]) &&
           yin(b[0]) && b[0].close < b[1].open;
}
bool bullishEngulfing(const Bars &b)
{
    return b.n() >= 3 && isSolidBody(b[1]) && isSolidBody(b[0]) && yin(b[1]) && yang(b[0]) &&
           b[0].close > b[1].open && b[0].open <= b[1].close && b[0].close > b[1].high;
}
bool bearishEngulfing(const Bars &b)
{
    return b.n() >= 3 && isSolidBody(b[1]) && isSolidBody(b[0]) && yang(b[1]) && yin(b[0]) &&
           b[0].close <= b[1].open && b[0].open >= b[1].high;
}
bool piercing(const Bars &b)
{
    return b.n() >= 3 && isSolidBody(b[1]) && b[1].increase < -2.0 && yin(b[1]) && yang(b[0]) &&
           b[0].open <= b[1].close && b[0].high <= b[1].open && isSolidBody(b[0]) && b[0].close < b[1].open;
}
bool sharpThreeSoldiers(const Bars &b)
{
    return b.n() >= 3 && isSolidBody(b[2]) && isSolidBody(b[0]) && !isSolidBody(b[1]) &&
           b[0].increase >= 3.6f && b[0].close >= b[0].open && b[0].close > b[1].high && yang(b[2]) &&
           b[1].low > b[2].close && body(b[1]) <= 0.5 * upperShadow(b[1]);
}
bool bullishHarami(const Bars &b)
{
    return b.n() >= 3 && isSolidBody(b[0]) && isSolidBody(b[1]) && b[0].increase > 0 && b[1].increase < 0 &&
           b[1].open > b[0].high && b[1].close < b[0].open && yang(b[0]) && yin(b[1]);
}
bool morningStar(const Bars &b)
{
    return b.n() >= 3 && yin(b[2]) && b[1].high <= b[2].close && b[0].open >= b[1].high &&
           top(b[1]) <= b[2].low && top(b[1]) <= b[0].low && shadowRatio(b[1]) >= 3.0 && yang(b[0]) &&
           isSolidBody(b[0]) && b[0].close >= b[2].close + 0.5 * (b[2].open - b[2].close);
}
// Needs four bars although it reads three: kept as the rule.
bool eveningStar(const Bars &b)
{
    return b.n() >= 4 && b[2].increase > 4.0 && isSolidBody(b[2]) && isSolidBody(b[0]) &&
           !isSolidBody(b[1]) && yang(b[2]) && yin(b[0]) && shadowRatio(b[1]) >= 3.0 &&
           b[1].open >= b[2].close && b[1].close >= b[0].open;
}
bool twoCrows(const Bars &b)
{
    return b.n() >= 3 && isSolidBody(b[1]) && yin(b[1]) && yin(b[0]) && b[0].open >= b[1].close &&
           b[0].close < b[1].low && b[0].high < b[1].open;
}
bool counterattack(const Bars &b)
{
    return b.n() >= 3 && b[1].increase <= -3.0 && yin(b[1]) && b[0].open < b[1].close && yang(b[0]) &&
           100 * (b[0].close - b[0].open) / b[0].open >= 3.0 &&
           isNear(b[0].close, b[1].close, 0.005 * b[1].close);
}
// The exclusion clause compares B1's open with B3's close: kept as the rule.
bool risingThreeMethods(const Bars &b)
{
    return b.n() >= 5 && isSolidBody(b[4]) && isSolidBody(b[0]) && b[4].close >= b[4].open &&
           b[4].increase > 3.0 &&
           !(b[3].close >= b[3].open && b[2].close >= b[2].open && b[1].open <= b[3].close) && yang(b[0]) &&
           b[0].close > b[4].close && b[1].low >= b[4].low && b[2].low >= b[4].low && b[3].low >= b[4].low &&
           b[4].close >= b[3].close && b[3].close >= b[2].close && b[2].close >= b[1].close;
}
// Compares B2's high with B3's open: kept as the rule.
bool fallingThreeMethods(const Bars &b)
{
    return b.n() >= 5 && isSolidBody(b[0]) && isSolidBody(b[4]) && yin(b[0]) && b[0].increase < -3.0 &&
           yang(b[1]) && yang(b[2]) && yang(b[3]) && yin(b[4]) && b[1].close < b[4].close &&
           b[2].close < b[4].close && b[3].close < b[4].close && b[4].low <= b[3].low &&
           b[3].low <= b[2].low && b[2].low <= b[1].low && b[0].close <= b[4].close &&
           b[1].high <= b[4].open && b[2].high <= b[3].open && b[3].high <= b[4].open;
}

template <bool (*rule)(const Bars &)>
bool recognizer(StockBars prefix)
{
    return rule(Bars{prefix});
}

const std::vector<std::pair<QString, KPatternRecognizer>> &table()
{
    static const std::vector<std::pair<QString, KPatternRecognizer>> entries = {
        {QStringLiteral("k.上缺口"), recognizer<upperGap>},
        {QStringLiteral("k.下缺口"), recognizer<lowerGap>},
        {QStringLiteral("k.光头阳线"), recognizer<shavenHeadYang>},
        {QStringLiteral("k.光脚阳线"), recognizer<shavenFootYang>},
        {QStringLiteral("k.光头光脚阳线"), recognizer<shavenYang>},
        {QStringLiteral("k.光头阴线"), recognizer<shavenHeadYin>},
        {QStringLiteral("k.光脚阴线"), recognizer<shavenFootYin>},
        {QStringLiteral("k.光头光脚阴线"), recognizer<shavenYin>},
        {QStringLiteral("k.涨停"), recognizer<limitUp>},
        {QStringLiteral("k.跌停"), recognizer<limitDown>},
        {QStringLiteral("k.一字跌停"), recognizer<onePriceLimitDown>},
        {QStringLiteral("k.一字涨停"), recognizer<onePriceLimitUp>},
        {QStringLiteral("k.十字星"), recognizer<doji>},
        {QStringLiteral("k.锤子线"), recognizer<hammer>},
        {QStringLiteral("k.倒锤子线"), recognizer<invertedHammer>},
        {QStringLiteral("k.红三兵"), recognizer<threeRedSoldiers>},
        {QStringLiteral("k.黑三兵"), recognizer<threeBlackCrows>},
        {QStringLiteral("k.旭日东升"), recognizer<risingSun>},
        {QStringLiteral("k.阳抱阳"), recognizer<yangEmbracesYang>},
        {QStringLiteral("k.阴包阴"), recognizer<yinEmbracesYin>},
        {QStringLiteral("k.乌云盖顶"), recognizer<darkCloudCover>},
        {QStringLiteral("k.涨势尽头"), recognizer<exhaustedRise>},
        {QStringLiteral("k.倾盆大雨"), recognizer<pouringRain>},
        {QStringLiteral("k.阳吞阴"), recognizer<bullishEngulfing>},
        {QStringLiteral("k.阴吞阳"), recognizer<bearishEngulfing>},
        {QStringLiteral("k.穿刺"), recognizer<piercing>},
        {QStringLiteral("k.尖三兵"), recognizer<sharpThreeSoldiers>},
        {QStringLiteral("k.看涨孕育线"), recognizer<bullishHarami>},
        {QStringLiteral("k.清晨之星"), recognizer<morningStar>},
        {QStringLiteral("k.黄昏之星"), recognizer<eveningStar>},
        {QStringLiteral("k.双飞乌鸦"), recognizer<twoCrows>},
        {QStringLiteral("k.好友反攻"), recognizer<counterattack>},
        {QStringLiteral("k.上升三法"), recognizer<risingThreeMethods>},
        {QStringLiteral("k.下降三法"), recognizer<fallingThreeMethods>},
    };
    return entries;
}

} // namespace

namespace KPatternTable {

bool isSolidBody(const Stock &bar)
{
    const float shadows = upperShadow(bar) + lowerShadow(bar);
    return body(bar) > shadows;
}

float shadowRatio(const Stock &bar)
{
    const float shadows = upperShadow(bar) + lowerShadow(bar);
    if (body(bar) < 0.02 && shadows < 0.2)
        return 0;
    return shadows / body(bar);
}

KPatternRecognizer find(const QString &name)
{
    for (const auto &[patternName, recognize] : table()) {
        if (patternName == name)
            return recognize;
    }
    return nullptr;
}

QStringList names()
{
    QStringList list;
    for (const auto &entry : table())
        list.append(entry.first);
    return list;
}

} // namespace KPatternTable
