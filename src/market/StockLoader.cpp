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
    if (series.code.isEmpty()) {
        m_lastSkip = StockSkip::Unreadable;
        return false;
    }
    if (config.kFormat != QLatin1String("default")) {
        m_lastSkip = StockSkip::OtherFormat;
        return false;
    }
    m_lastSkip = TextFile::readStockFile(config.kDir + QLatin1Char('/') + series.code, series.text());
    if (m_lastSkip != StockSkip::None)
        return false;
    parseKLineText(series);
    if (series.size() <= 6) {
        m_lastSkip = StockSkip::TooFewDays;
        return false;
    }
    return true;
}
