#pragma once

#include "TradeRecord.h"
#include "market/Stock.h"
#include "script/Script.h"
#include "script/StrategyConfig.h"

#include <vector>

// Walks one stock's days under the strategy, holding at most one position,
// and collects the trades in the order they are filed.
class StockSimulator {
public:
    explicit StockSimulator(const StrategyConfig &config);

    // The script must already be bound to `series`. Appends to `trades`.
    void simulateStock(const StockSeries &series, const Script &script, std::vector<TradeRecord> &trades);

    // One visited day; returns how many following days to skip.
    int stepDay(const QString &code, int index, bool buySignal, bool saleSignal);

private:
    int tryBuy(const QString &code, int index);
    int checkExit(int index);
    int sell(int index, TradeStatus type);
    void filePendingBuy(const QString &code, int index);
    void fileAndClear();
    int excludedDays() const;
    QString dateText(std::string_view date);

    const StrategyConfig &m_config;
    const bool m_saleAtClose;
    const bool m_rapidTakeProfit;
    StockBars m_bars;
    TradeRecord m_position;
    std::vector<TradeRecord> *m_trades = nullptr;
    std::vector<QString> m_dateTexts; // by TradeDate slot: the market's dates repeat in every stock
};
