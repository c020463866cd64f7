#pragma once

#include "Stock.h"
#include "StockSkip.h"

#include <QString>

struct StrategyConfig;

// Loads listed files one after another into a series that keeps its buffers.
class StockLoader {
public:
    // Reads the file the configuration names for this listing entry: the
    // configured directory, "/", and the entry's last six characters. True
    // when the series holds more than six days.
    bool loadStockSeries(const QString &listedPath, const StrategyConfig &config, StockSeries &series);

    // Why the last load gave no series to walk.
    StockSkip lastSkip() const { return m_lastSkip; }

private:
    StockSkip m_lastSkip = StockSkip::None;
};
