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
        for (int i = 5; i < days; ++i) {
            m_buy[size_t(i)] = script.isBuy(i);
            m_sale[size_t(i)] = script.isSale(i);
        }
    }

    bool isBuy(int dayIndex) const { return m_buy[size_t(dayIndex)]; }
    bool isSale(int dayIndex) const { return m_sale[size_t(dayIndex)]; }

private:
    std::vector<char> m_buy;
    std::vector<char> m_sale;
};
