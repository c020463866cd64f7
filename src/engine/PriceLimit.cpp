#include "PriceLimit.h"

#include <cmath>

namespace {

// The day from which the growth board's band widened from 10 % to 20 %.
constexpr std::string_view kChiNextWidening = "2020-08-24";

} // namespace

PriceLimit::PriceLimit(const TradeRules &rules, const QString &code) : m_mode(rules.limit)
{
    const auto startsWith = [&code](const char *prefix) { return code.startsWith(QLatin1String(prefix)); };
    if (rules.stCodes.contains(code))
        m_board = Board::St;
    else if (startsWith("300") || startsWith("301"))
        m_board = Board::ChiNext;
    else if (startsWith("688") || startsWith("689"))
        m_board = Board::Star;
    else if (startsWith("4") || startsWith("8") || startsWith("920"))
        m_board = Board::Beijing;
    else
        m_board = Board::Main;
}

int PriceLimit::percentOn(std::string_view date) const
{
    switch (m_board) {
    case Board::St: return 5;
    case Board::ChiNext: return date >= kChiNextWidening ? 20 : 10;
    case Board::Star: return 20;
    case Board::Beijing: return 30;
    case Board::Main: break;
    }
    return 10;
}

bool PriceLimit::atLimitUp(double price, double previousClose, std::string_view date) const
{
    return atLimit(price, previousClose, date, 1);
}

bool PriceLimit::atLimitDown(double price, double previousClose, std::string_view date) const
{
    return atLimit(price, previousClose, date, -1);
}

bool PriceLimit::atLimit(double price, double previousClose, std::string_view date, int direction) const
{
    if (m_mode == TradeRules::Limit::Off || !(previousClose > 0))
        return false;
    const int percent = percentOn(date);
    if (m_mode == TradeRules::Limit::Adjusted) {
        // Adjusted prices are not rounded to the cent the exchange rounds to:
        // half a percentage point of slack stands for that rounding.
        const double move = (price / previousClose - 1) * 100 * direction;
        return move >= percent - 0.5;
    }
    // Prices as traded: the exchange's limit in whole cents, compared in cents
    // because float prices never compare exactly.
    const long long previousCents = std::llround(previousClose * 100);
    const long long limitCents = (previousCents * (100 + direction * percent) + 50) / 100;
    const long long cents = std::llround(price * 100);
    return direction > 0 ? cents >= limitCents : cents <= limitCents;
}
