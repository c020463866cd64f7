#include "ReportParts.h"

#include <QHash>

#include <algorithm>
#include <numeric>

namespace {

struct Position {
    const ReportTrade *trade;
    int buyDay;
    int saleDay; // the calendar's size when the sale lies beyond it
    double shares;
    const ReportMarket::Closes *stock; // null when no simulated stock has the code
    int bar;                           // the stock's last bar on or before the day marked; -1: none yet
};

// The account walking the calendar: cash, open positions and what it paid.
class Account {
public:
    Account(const ReportMarket &market, const ReportCalendar &calendar, const ReportSettings &settings)
        : m_calendar(calendar), m_settings(settings), m_cash(settings.capital)
    {
        for (const ReportMarket::Closes *stock : market.stocks()) {
            if (!m_stocks.contains(stock->code))
                m_stocks.insert(stock->code, stock);
        }
    }

    // Sales first of positions bought before `day`, then (after the buys)
    // of those bought that day, so a same-day round trip frees its money at once.
    void sell(int day, bool boughtToday);
    void buy(const ReportTrade &trade, int day, int saleDay, double yesterdayEquity);
    double markedEquity(int day);

    AccountCurve curve;
    bool tradedToday = false;
    int open() const { return int(m_open.size()); }
    double cash() const { return m_cash; }

private:
    double closeOn(Position &position, int day) const;
    double sharesFor(double budget, double price) const;

    const ReportCalendar &m_calendar;
    const ReportSettings &m_settings;
    QHash<QString, const ReportMarket::Closes *> m_stocks;
    std::vector<Position> m_open; // in the order bought
    double m_cash;
};

void Account::sell(int day, bool boughtToday)
{
    std::erase_if(m_open, [&](const Position &p) {
        if (p.saleDay > day || (p.buyDay == day) != boughtToday)
            return false;
        const double value = p.shares * p.trade->salePrice;
        const double costs = m_settings.saleCosts(value);
        m_cash += value - costs;
        curve.costs += costs;
        tradedToday = true;
        return true;
    });
}

// The most shares, in lots of 100, whose price and costs fit the budget.
double Account::sharesFor(double budget, double price) const
{
    const double lot = 100 * price;
    const double rates = (m_settings.commission + m_settings.transfer) / 100;
    double lots =
        std::floor(std::min(budget / (lot * (1 + rates)),
                            (budget - m_settings.commissionMin) / (lot * (1 + m_settings.transfer / 100))));
    if (!(lots > 0))
        return 0;
    // The bounds above are exact up to rounding; a few steps settle it.
    for (int step = 0; step < 8 && lots > 0; ++step, lots -= 1) {
        const double value = lots * lot;
        if (value + m_settings.buyCosts(value) <= budget)
            return lots * 100;
    }
    return 0;
}

void Account::buy(const ReportTrade &trade, int day, int saleDay, double yesterdayEquity)
{
    const double shares =
        m_settings.slotCount > 0 && open() < m_settings.slotCount
            ? sharesFor(std::min(m_cash, yesterdayEquity / m_settings.slotCount), trade.buyPrice)
            : 0;
    if (shares <= 0) {
        ++curve.skippedBuys;
        return;
    }
    const double value = shares * trade.buyPrice;
    const double costs = m_settings.buyCosts(value);
    m_cash -= value + costs;
    curve.costs += costs;
    tradedToday = true;
    const ReportMarket::Closes *stock = m_stocks.value(trade.code);
    int bar = -1;
    if (stock) {
        const auto &days = stock->days;
        const auto after = std::upper_bound(days.begin(), days.end(), day, [this](int d, uint32_t bar) {
            return d < m_calendar.indexOfDay[bar];
        });
        bar = int(after - days.begin()) - 1;
    }
    m_open.push_back({&trade, day, saleDay, shares, stock, bar});
}

// A stock without a bar that day is worth its last close.
double Account::closeOn(Position &p, int day) const
{
    if (!p.stock)
        return p.trade->buyPrice;
    const auto &days = p.stock->days;
    while (size_t(p.bar + 1) < days.size() && m_calendar.indexOfDay[days[size_t(p.bar + 1)]] <= day)
        ++p.bar;
    return p.bar >= 0 ? double(p.stock->closes[size_t(p.bar)]) : p.trade->buyPrice;
}

double Account::markedEquity(int day)
{
    double equity = m_cash;
    for (Position &p : m_open)
        equity += p.shares * closeOn(p, day);
    return equity;
}

} // namespace

AccountCurve followTrades(const std::vector<ReportTrade> &trades, const ReportMarket &market,
                          const ReportCalendar &calendar, const ReportSettings &settings)
{
    // Each closed trade's buy and sale day; book order kept within a day.
    struct Planned {
        const ReportTrade *trade;
        int buyDay, saleDay;
    };
    std::vector<Planned> planned;
    for (const ReportTrade &trade : trades) {
        if (!trade.isClosed())
            continue;
        const int buyDay = calendar.indexFrom(market.dayOf(trade.buyDate), trade.buyDate);
        const int saleDay = calendar.indexFrom(market.dayOf(trade.saleDate), trade.saleDate);
        if (buyDay < calendar.size())
            planned.push_back({&trade, buyDay, std::max(saleDay, buyDay)});
    }
    // The book is in buy-date order already unless its dates are of mixed forms.
    const auto byBuyDay = [](const Planned &a, const Planned &b) { return a.buyDay < b.buyDay; };
    if (!std::is_sorted(planned.begin(), planned.end(), byBuyDay))
        std::stable_sort(planned.begin(), planned.end(), byBuyDay);

    Account account(market, calendar, settings);
    double yesterday = settings.capital;
    auto next = planned.begin();
    for (int day = 0; day < calendar.size(); ++day) {
        account.tradedToday = false;
        account.sell(day, false);
        for (; next != planned.end() && next->buyDay == day; ++next)
            account.buy(*next->trade, day, next->saleDay, yesterday);
        account.sell(day, true);
        yesterday = account.markedEquity(day);
        AccountCurve &curve = account.curve;
        curve.equity.push_back(yesterday);
        curve.cash.push_back(account.cash());
        curve.positions.push_back(account.open());
        curve.exposedDays += account.tradedToday || account.open() > 0;
    }
    return std::move(account.curve);
}
