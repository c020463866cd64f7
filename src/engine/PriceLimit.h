#pragma once

#include "script/TradeRules.h"

#include <QString>

#include <string_view>

// One stock's daily price band: how far its price may move from the previous
// close, by board (and by date where a board's band changed), and whether a
// price sits at either end of it.
class PriceLimit {
public:
    PriceLimit(const TradeRules &rules, const QString &code);

    // The band in percent on a day ("yyyy-MM-dd").
    int percentOn(std::string_view date) const;

    // Without a previous close (0 or less) there is no band.
    bool atLimitUp(double price, double previousClose, std::string_view date) const;
    bool atLimitDown(double price, double previousClose, std::string_view date) const;

private:
    enum class Board { Main, ChiNext, Star, Beijing, St };

    bool atLimit(double price, double previousClose, std::string_view date, int direction) const;

    TradeRules::Limit m_mode;
    Board m_board;
};
