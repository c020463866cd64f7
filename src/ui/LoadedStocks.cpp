#include "LoadedStocks.h"

LoadedStocks::LoadedStocks(const StockFileList &files, const StrategyConfig &config) : m_config(config)
{
    for (const QString &path : files)
        m_paths.insert(config.kLineSource().codeOf(path), path);
}

const StockSeries *LoadedStocks::find(const QString &code)
{
    if (const auto known = m_series.find(code); known != m_series.end())
        return &known->second;
    const auto path = m_paths.constFind(code);
    if (path == m_paths.cend())
        return nullptr;
    StockSeries series;
    if (!m_loader.loadStockSeries(*path, m_config, series))
        return nullptr;
    return &m_series.emplace(code, std::move(series)).first->second;
}
