#pragma once

#include "DaySignals.h"
#include "PriceLimit.h"
#include "RuleEffects.h"
#include "RunCounts.h"
#include "TradeRecord.h"
#include "market/Stock.h"
#include "script/Script.h"
#include "script/StrategyConfig.h"

#include <optional>
#include <vector>

// Walks one stock's days under the strategy, holding at most one position,
// and collects the trades in the order they are filed.
class StockSimulator {
public:
    explicit StockSimulator(const StrategyConfig &config);

    // The script must already be bound to `series`. Appends to `trades`.
    void simulateStock(const StockSeries &series, const Script &script, std::vector<TradeRecord> &trades);
    // The same walk over conditions already evaluated for `series`.
    void simulateStock(const StockSeries &series, const DaySignals &conditions,
                       std::vector<TradeRecord> &trades);

    // One visited day; returns how many following days to skip.
    int stepDay(int index, bool buySignal, bool saleSignal);

    // Counted over every stock simulated so far.
    const RuleEffects &ruleEffects() const { return m_effects; }
    // The buy signals met so far and those refused for the opening gap; the
    // files are left to the caller.
    const RunCounts &counts() const { return m_counts; }

private:
    enum class Exit { None, RapidProfit, Profit, Loss, Expiry };

    int stepHolding(int index, bool saleSignal);
    int tryBuy(int index);
    Exit exitOn(int index, bool rapidAllowed) const;
    int checkExit(int index, bool rapidAllowed);
    int sell(int index, TradeStatus type);
    int stopIntraday(int index);
    int closeAt(double price, int fillIndex, TradeStatus type);
    bool notSoldAtLimitDown(double price, int fillIndex, TradeStatus type);
    double stopPrice() const;
    void filePendingBuy(int index);
    void fileAndClear();
    int excludedDays() const;
    static int dateId(std::string_view date);

    const StrategyConfig &m_config;
    const bool m_saleAtClose;
    const bool m_rapidTakeProfit;
    const TradeRules &m_rules;
    std::optional<PriceLimit> m_limit; // the current stock's band, while the limit rule is on
    StockBars m_bars;
    TradeRecord m_position;
    bool m_holding = false; // m_position is an open position
    std::optional<TradeStatus> m_carriedSale; // the type of a sale not filled at limit-down, tried again on the next bar
    RuleEffects m_effects;
    RunCounts m_counts;
    std::vector<TradeRecord> *m_trades = nullptr;
};
