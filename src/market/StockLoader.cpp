#include "StockLoader.h"

#include "KLineParser.h"
#include "StockFileList.h"
#include "TextFile.h"
#include "script/StrategyConfig.h"

bool StockLoader::loadStockSeries(const QString &listedPath, const StrategyConfig &config,
                                  StockSeries &series)
{
    series.clear();
    series.code = stockCodeOf(listedPath);
    if (series.code.isEmpty() || config.kFormat != QLatin1String("default"))
        return false;
    if (!TextFile::readBytes(config.kDir + QLatin1Char('/') + series.code, m_bytes))
        return false;
    parseKLineText(std::string_view(m_bytes.data(), m_bytes.size()), series);
    return series.size() > 6;
}
