#pragma once

#include "market/Stock.h"
#include "script/StrategyConfig.h"

#include <QString>

#include <optional>
#include <vector>

// A stock whose buy lines hold on its last bar, with that bar's figures.
struct StockPick {
    QString code;
    QString date; // the last bar's, as the file has it
    float close = 0;
    float increase = 0; // the last day's change in percent
    float volume = 0;
    int fileIndex = 0; // the stock's place in the run's listing
};

// Collects, stock by stock and from any worker, each stock's last bar and
// whether the buy lines hold on it; then names the picks: the stocks that
// signal on the latest date of the whole folder (a stock that stopped
// trading earlier signals for a day that has passed). Neither open positions
// nor the per-day limit thin them out.
class TodayPicks {
public:
    explicit TodayPicks(int fileCount);

    // Each file index once, from any thread.
    void addStock(int fileIndex, const StockSeries &series, bool buySignal);

    // Ordered by the last bar's volume as `order` says, equal volumes in file order.
    std::vector<StockPick> picks(BuyOrder order) const;

private:
    struct Last {
        QString date; // empty for a file that gave no series
        std::optional<StockPick> pick;
    };
    std::vector<Last> m_lasts;
};
