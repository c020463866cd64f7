#pragma once

#include "script/Script.h"

#include <vector>

// A bound script's buy and sale conditions for every day of one stock,
// evaluated once so that several simulations with different trade settings
// can walk the same stock without evaluating them again.
class DaySignals {
public:
    // `script` must be bound to a series of `days` bars. The first five days
    // only feed the indicators and are never asked for.
    void evaluate(const Script &script, int days)
    {
        m_buy.assign(size_t(days), 0);
        m_sale.assign(size_t(days), 0);
        if (days <= kFirstAsked)
            return;
        script.buyDays(kFirstAsked, days, m_buy.data() + kFirstAsked, m_columns);
        script.saleDays(kFirstAsked, days, m_sale.data() + kFirstAsked, m_columns);
    }

    bool isBuy(int dayIndex) const { return m_buy[size_t(dayIndex)]; }
    bool isSale(int dayIndex) const { return m_sale[size_t(dayIndex)]; }

private:
    static constexpr int kFirstAsked = 5;
    std::vector<unsigned char> m_buy;
    std::vector<unsigned char> m_sale;
    DayColumns m_columns;
};
