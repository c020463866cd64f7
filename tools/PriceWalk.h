#pragma once

#include "SampleRandom.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string_view>

// The generator's inside: one stock's prices and volume, day after day.
namespace SampleMarket {

// One day's prices in cents and volume in shares.
struct Bar {
    std::int64_t open, high, low, close, volume;
};

enum class DayKind { Normal, LimitUp, LimitDown, SealedUp, SealedDown };

inline std::int64_t toCents(double cents)
{
    return std::int64_t(cents + 0.5); // prices are positive: a half cent rounds up
}

// The price path of one stock: trends of a few weeks, the daily band around
// the previous close, runs of limit days and volume that follows the move.
class PriceWalk {
public:
    PriceWalk(Random &random, std::string_view code) : m_random(random)
    {
        const bool wideBand = code.starts_with("300") || code.starts_with("301") || code.starts_with("688");
        m_limitPercent = wideBand ? 20 : 10;
        m_volatility = m_random.uniform(0.015, 0.032) * (wideBand ? 1.3 : 1.0);
        const double u = m_random.uniform();
        m_close = toCents(100.0 * (3.0 + 60.0 * u * u) * (code.starts_with("688") ? 2.0 : 1.0));
        m_anchor = m_close;
        const double turnover = 5e7 * (0.2 + 3.0 * m_random.uniform() * m_random.uniform());
        m_quietVolume = turnover * 100.0 / double(m_close);
    }

    Bar next(bool resumed)
    {
        steerTrend();
        const DayKind kind = pickKind();
        Bar bar{};
        bar.close = closeFor(kind, resumed);
        if (kind == DayKind::SealedUp || kind == DayKind::SealedDown) {
            // Sealed at the limit from the first trade: one price all day, thin volume.
            bar.open = bar.high = bar.low = bar.close;
            bar.volume = shares(0.12 + 0.2 * m_random.uniform());
        } else {
            bar.open = openFor(kind);
            spreadHighLow(bar);
            const double move = std::abs(double(bar.close - m_close)) / double(m_close);
            const double gap = std::abs(double(bar.open - m_close)) / double(m_close);
            bar.volume = shares(0.6 + 0.5 * m_random.uniform() + 10.0 * move + 4.0 * gap);
        }
        m_lastKind = kind;
        m_close = bar.close;
        return bar;
    }

private:
    std::int64_t limitUp() const { return (m_close * (100 + m_limitPercent) + 50) / 100; }
    std::int64_t limitDown() const
    {
        return std::max<std::int64_t>(1, (m_close * (100 - m_limitPercent) + 50) / 100);
    }
    std::int64_t clampToBand(std::int64_t cents) const { return std::clamp(cents, limitDown(), limitUp()); }
    std::int64_t priceAfter(double move) const
    {
        return clampToBand(toCents(double(m_close) * (1.0 + move)));
    }

    // Long enough trends that moving averages cross now and then, not every day;
    // a pull back when the price has wandered far from where it started.
    void steerTrend()
    {
        if (--m_trendDays <= 0) {
            m_trendDays = 5 + m_random.below(40);
            m_drift = m_volatility * m_random.uniform(-0.35, 0.35);
        }
        const double ratio = double(m_close) / m_anchor;
        if (ratio > 4.0)
            m_drift = -std::abs(m_drift) - 0.1 * m_volatility;
        else if (ratio < 0.3 || m_close < 200)
            m_drift = std::abs(m_drift) + 0.1 * m_volatility;
    }

    DayKind pickKind()
    {
        // Limit days come in runs, and a run is more often sealed all day.
        const bool afterUp = m_lastKind == DayKind::LimitUp || m_lastKind == DayKind::SealedUp;
        const bool afterDown = m_lastKind == DayKind::LimitDown || m_lastKind == DayKind::SealedDown;
        const double sealed = (afterUp || afterDown) ? 0.5 : 0.3;
        if (m_random.chance(afterUp ? 0.35 : 0.012))
            return m_random.chance(sealed) ? DayKind::SealedUp : DayKind::LimitUp;
        if (m_random.chance(afterDown ? 0.3 : 0.008))
            return m_random.chance(sealed) ? DayKind::SealedDown : DayKind::LimitDown;
        return DayKind::Normal;
    }

    std::int64_t closeFor(DayKind kind, bool resumed)
    {
        switch (kind) {
        case DayKind::LimitUp:
        case DayKind::SealedUp: return limitUp();
        case DayKind::LimitDown:
        case DayKind::SealedDown: return limitDown();
        case DayKind::Normal: break;
        }
        // News piles up during a suspension; the first day back moves more.
        double move = m_drift + m_volatility * m_random.normal() * (resumed ? 2.5 : 1.0);
        if (m_random.chance(0.02))
            move += m_random.sign() * m_random.uniform(0.03, 0.07);
        return priceAfter(move);
    }

    std::int64_t openFor(DayKind kind)
    {
        double gap = 0.3 * m_drift + 0.3 * m_volatility * m_random.normal();
        if (m_random.chance(0.04))
            gap += m_random.sign() * m_random.uniform(0.02, 0.06);
        if (kind == DayKind::LimitUp)
            gap = std::abs(gap);
        else if (kind == DayKind::LimitDown)
            gap = -std::abs(gap);
        return priceAfter(gap);
    }

    void spreadHighLow(Bar &bar)
    {
        const double reach = double(m_close) * m_volatility * 0.6;
        bar.high = std::min(limitUp(), std::max(bar.open, bar.close) + toCents(reach * m_random.uniform()));
        bar.low = std::max(limitDown(), std::min(bar.open, bar.close) - toCents(reach * m_random.uniform()));
    }

    std::int64_t shares(double activity) const
    {
        // Whole lots of 100 shares, as the exchanges trade them.
        return std::max<std::int64_t>(100, std::int64_t(m_quietVolume * activity / 100.0 + 0.5) * 100);
    }

    Random &m_random;
    int m_limitPercent = 10;
    double m_volatility = 0.02;
    double m_quietVolume = 1e6;
    double m_anchor = 1000;
    std::int64_t m_close = 1000;
    double m_drift = 0;
    int m_trendDays = 0;
    DayKind m_lastKind = DayKind::Normal;
};

} // namespace SampleMarket
