#pragma once

#include "market/StockFileList.h"
#include "market/StockLoader.h"

#include <QHash>

#include <map>

// The stocks of one run, by code, for the chart. The engine keeps no series
// once a stock is simulated, so a stock is read again the first time a trade
// of it is clicked, from the directory and format the run used.
class LoadedStocks {
public:
    LoadedStocks(const StockFileList &files, const KLineSource &source);

    // nullptr when the code was not part of the run or its file no longer reads.
    const StockSeries *find(const QString &code);

private:
    QHash<QString, QString> m_paths;
    KLineSource m_source;
    StockLoader m_loader;
    std::map<QString, StockSeries> m_series;
};
