#pragma once

#include "report/StrategyReport.h"

#include <cmath>
#include <initializer_list>

// A market written as a table of closes, one column per calendar day; NaN
// where the stock has no bar.
class TestMarket {
public:
    explicit TestMarket(std::initializer_list<const char *> days) : m_days(days.begin(), days.end()) {}

    void add(const char *code, std::initializer_list<double> closes)
    {
        std::vector<Stock> bars;
        size_t day = 0;
        for (double close : closes) {
            if (!std::isnan(close)) {
                Stock bar;
                bar.date = m_days[day];
                bar.close = float(close);
                bars.push_back(bar);
            }
            ++day;
        }
        market.addStock(m_order++, QString::fromLatin1(code), bars);
    }

    ReportMarket market;

private:
    std::vector<const char *> m_days; // literals: the bars point into them
    int m_order = 0;
};

inline ReportTrade closedTrade(const char *code, const char *buyDate, double buy, const char *saleDate,
                               double sale, int holdDays, TradeExit exit, bool inSummary = true)
{
    return {QString::fromLatin1(code),
            QString::fromLatin1(buyDate),
            buy,
            QString::fromLatin1(saleDate),
            sale,
            holdDays,
            exit,
            true,
            inSummary};
}
