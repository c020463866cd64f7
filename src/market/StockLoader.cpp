#include "StockLoader.h"

#include "KLineParser.h"
#include "StockFileList.h"
#include "TextFile.h"

bool StockLoader::loadStockSeries(const QString &listedPath, const QString &dir, const QString &format,
                                  StockSeries &series)
{
    series.clear();
    series.code = stockCodeOf(listedPath);
    if (series.code.isEmpty()) {
        m_lastSkip = StockSkip::Unreadable;
        return false;
    }
    if (format != QLatin1String("default")) {
        m_lastSkip = StockSkip::OtherFormat;
        return false;
    }
    m_lastSkip = TextFile::readStockFile(dir + QLatin1Char('/') + series.code, series.text());
    if (m_lastSkip != StockSkip::None)
        return false;
    parseKLineText(series);
    if (series.size() <= 6) {
        m_lastSkip = StockSkip::TooFewDays;
        return false;
    }
    return true;
}
