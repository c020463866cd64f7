#pragma once

#include "Stock.h"
#include "StockSkip.h"

#include <QString>

// Loads listed files one after another into a series that keeps its buffers.
class StockLoader {
public:
    // Reads the file for this listing entry: `dir`, "/", and the entry's last
    // six characters, in the K-line `format` ("default" is the only one read).
    // True when the series holds more than six days.
    bool loadStockSeries(const QString &listedPath, const QString &dir, const QString &format,
                         StockSeries &series);

    // Why the last load gave no series to walk.
    StockSkip lastSkip() const { return m_lastSkip; }

private:
    StockSkip m_lastSkip = StockSkip::None;
};
