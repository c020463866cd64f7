#include "LoadedStocks.h"

LoadedStocks::LoadedStocks(const StockFileList &files, const KLineSource &source) : m_source(source)
{
    for (const QString &path : files)
        m_paths.insert(m_source.codeOf(path), path);
}

const StockSeries *LoadedStocks::find(const QString &code)
{
    if (const auto known = m_series.find(code); known != m_series.end())
        return &known->second;
    const auto path = m_paths.constFind(code);
    if (path == m_paths.cend())
        return nullptr;
    StockSeries series;
    if (!m_loader.load(*path, m_source, series))
        return nullptr;
    return &m_series.emplace(code, std::move(series)).first->second;
}
