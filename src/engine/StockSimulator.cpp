#include "StockSimulator.h"

#include "TradeDate.h"

#include <algorithm>

namespace {

double percentChange(double price, double base) { return (price - base) * 100 / base; }

} // namespace

StockSimulator::StockSimulator(const StrategyConfig &config)
    : m_config(config), m_saleAtClose(config.salePoint == SalePoint::Close),
      m_rapidTakeProfit(config.saleRapid == RapidSale::Yes), m_rules(config.rules)
{
}

void StockSimulator::simulateStock(const StockSeries &series, const Script &script,
                                   std::vector<TradeRecord> &trades)
{
    DaySignals conditions;
    conditions.evaluate(script, series.size());
    simulateStock(series, conditions, trades);
}

void StockSimulator::simulateStock(const StockSeries &series, const DaySignals &conditions,
                                   std::vector<TradeRecord> &trades)
{
    m_bars = series.view();
    m_trades = &trades;
    m_position = TradeRecord();
    m_holding = false;
    m_carriedSale.reset();
    if (m_rules.limit != TradeRules::Limit::Off)
        m_limit.emplace(m_rules, series.code);
    // Earlier days only feed the indicators.
    for (long long i = 5; i < series.size();) {
        const bool buySignal = conditions.isBuy(int(i));
        const bool saleSignal = conditions.isSale(int(i));
        i += (long long)stepDay(int(i), buySignal, saleSignal) + 1;
    }
    m_trades = nullptr;
}

int StockSimulator::stepDay(int index, bool buySignal, bool saleSignal)
{
    if (index + 1 < int(m_bars.size())) {
        if (m_holding)
            return stepHolding(index, saleSignal);
        return buySignal ? tryBuy(index) : 0;
    }
    // The last bar: a signal can only be bought tomorrow; an open position
    // (or a sale still waiting for a fill) has no exit day and is dropped
    // without a record.
    if (!m_holding && buySignal) {
        ++m_counts.buySignals;
        filePendingBuy(index);
    }
    m_position = TradeRecord();
    m_holding = false;
    m_carriedSale.reset();
    return 0;
}

int StockSimulator::stepHolding(int index, bool saleSignal)
{
    // A sale refused at limit-down goes through on the next bar, whatever the conditions.
    if (m_carriedSale)
        return sell(index, *m_carriedSale);
    const bool heldSinceToday = m_rules.t1 && index == m_position.buyIndex;
    if (heldSinceToday) {
        const bool stopWouldFill = m_rules.stopIntraday && double(m_bars[size_t(index)].low) <= stopPrice();
        if (m_saleAtClose) {
            // Nothing bought today can be sold today: every exit waits a day.
            m_effects.t1Delayed += saleSignal || stopWouldFill || exitOn(index, true) != Exit::None;
            return 0;
        }
        // Selling at the next open already respects T+1; only the fills
        // within the buy day are ruled out.
        m_effects.t1Delayed += stopWouldFill || exitOn(index, true) == Exit::RapidProfit;
    } else if (m_rules.stopIntraday && double(m_bars[size_t(index)].low) <= stopPrice()) {
        // A stop order fills before anything the day's close could decide.
        return stopIntraday(index);
    }
    return saleSignal ? sell(index, TradeStatus::SaleSignal) : checkExit(index, !heldSinceToday);
}

int StockSimulator::tryBuy(int index)
{
    const Stock &today = m_bars[size_t(index)];
    const Stock &next = m_bars[size_t(index + 1)];
    const double gap = percentChange(next.open, today.close);
    ++m_counts.buySignals;
    if (!(double(m_config.maxAllowDecrease) <= gap && gap <= double(m_config.maxAllowIncrease))) {
        ++m_counts.outsideGap;
        return 0;
    }
    if (m_limit && m_limit->atLimitUp(next.open, today.close, next.date)) {
        ++m_effects.limitUpNotBought; // nobody sells at an open at limit-up
        return 0;
    }
    m_holding = true;
    m_position.buyPrice = next.open;
    m_position.buyDate = dateId(next.date);
    m_position.volumeKey = next.volume;
    m_position.holdDays = 1;
    m_position.status = TradeStatus::Holding;
    m_position.closed = false;
    m_position.buyIndex = index + 1;
    // The buy day itself is examined next: exits already apply on it.
    return 0;
}

StockSimulator::Exit StockSimulator::exitOn(int index, bool rapidAllowed) const
{
    const Stock &bar = m_bars[size_t(index)];
    const double closeGain = percentChange(bar.close, m_position.buyPrice);
    const double highGain = percentChange(bar.high, m_position.buyPrice);
    if (rapidAllowed && m_rapidTakeProfit && double(m_config.maxProfit) <= highGain)
        return Exit::RapidProfit;
    if (closeGain >= double(m_config.maxProfit))
        return Exit::Profit;
    if (closeGain <= double(m_config.maxLost))
        return Exit::Loss;
    if (index - m_position.buyIndex + 1 >= m_config.maxHoldDay)
        return Exit::Expiry;
    return Exit::None;
}

int StockSimulator::checkExit(int index, bool rapidAllowed)
{
    switch (exitOn(index, rapidAllowed)) {
    case Exit::RapidProfit:
        // Sold intraday at the exact target; such trades stay out of the summary.
        m_position.salePrice = (m_config.maxProfit * 0.01 + 1.0) * m_position.buyPrice;
        m_position.saleDate = dateId(m_bars[size_t(index)].date);
        m_position.holdDays = index - m_position.buyIndex + 1;
        m_position.status = TradeStatus::TakeProfit;
        m_position.closed = true;
        fileAndClear();
        return excludedDays();
    case Exit::Profit: return sell(index, TradeStatus::TakeProfit);
    case Exit::Loss: return sell(index, TradeStatus::StopLoss);
    case Exit::Expiry: return sell(index, TradeStatus::HoldExpired);
    case Exit::None: break;
    }
    return 0;
}

int StockSimulator::sell(int index, TradeStatus type)
{
    const Stock &bar = m_bars[size_t(index)];
    if (m_saleAtClose)
        return notSoldAtLimitDown(bar.close, index, type) ? 0 : closeAt(bar.close, index, type);
    if (index + 1 < int(m_bars.size())) {
        const double open = m_bars[size_t(index + 1)].open;
        return notSoldAtLimitDown(open, index + 1, type) ? 0 : closeAt(open, index + 1, type);
    }
    // Never reached from the day step, which does not sell on the last bar.
    m_position.salePrice = 0;
    m_position.saleDate =
        TradeDate::idOfText(QStringLiteral("%1下一交易日开盘").arg(TradeDate::text(dateId(bar.date))));
    m_position.holdDays = index - m_position.buyIndex + 2;
    m_position.status = type;
    fileAndClear();
    return excludedDays();
}

// Sold like a stop order: at the stop price, or at the open when the day
// opened below it.
int StockSimulator::stopIntraday(int index)
{
    const double price = std::min(double(m_bars[size_t(index)].open), stopPrice());
    const TradeStatus type = TradeStatus::StopLoss;
    if (notSoldAtLimitDown(price, index, type))
        return 0;
    ++m_effects.stopIntraday;
    return closeAt(price, index, type);
}

// Files the position as sold at PRICE on bar FILLINDEX; the days it leaves
// out of new buys.
int StockSimulator::closeAt(double price, int fillIndex, TradeStatus type)
{
    m_position.salePrice = price;
    m_position.saleDate = dateId(m_bars[size_t(fillIndex)].date);
    m_position.holdDays = fillIndex - m_position.buyIndex + 1;
    m_position.closed = true;
    m_position.summaryCount = SummaryCount::Counted;
    m_position.status = type;
    fileAndClear();
    return excludedDays();
}

// True when the price sits at limit-down on the fill bar: nobody buys there,
// so the sale waits for the next bar, keeping its type.
bool StockSimulator::notSoldAtLimitDown(double price, int fillIndex, TradeStatus type)
{
    const Stock &bar = m_bars[size_t(fillIndex)];
    if (!m_limit || !m_limit->atLimitDown(price, m_bars[size_t(fillIndex - 1)].close, bar.date))
        return false;
    m_effects.limitDownNotSold += !m_carriedSale;
    m_carriedSale = type;
    return true;
}

double StockSimulator::stopPrice() const { return (m_config.maxLost * 0.01 + 1.0) * m_position.buyPrice; }

void StockSimulator::filePendingBuy(int index)
{
    m_position = TradeRecord();
    const QString day = TradeDate::text(dateId(m_bars[size_t(index)].date));
    m_position.buyDate = TradeDate::idOfText(QStringLiteral("%1下一日开盘买入").arg(day));
    m_position.buyPrice = 0;
    m_position.salePrice = 0;
    m_position.volumeKey = 0;
    m_position.holdDays = 1;
    m_position.status = TradeStatus::PendingBuy;
    m_position.closed = false;
    fileAndClear();
}

void StockSimulator::fileAndClear()
{
    m_trades->push_back(m_position);
    m_position = TradeRecord();
    m_holding = false;
    m_carriedSale.reset();
}

int StockSimulator::dateId(std::string_view date) { return TradeDate::idOf(date); }

// A negative setting would make the walk stand still or go back.
int StockSimulator::excludedDays() const { return m_config.minExclude > 0 ? m_config.minExclude : 0; }
