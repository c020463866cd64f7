#include "StockLoader.h"

#include "CsvKLineReader.h"
#include "KLineParser.h"
#include "StockCode.h"
#include "TdxDayReader.h"
#include "TextFile.h"

#include <QDebug>

bool StockLoader::load(const QString &listedPath, const KLineSource &source, StockSeries &series)
{
    series.clear();
    const QString code = source.codeOf(listedPath);
    const KLineFormat format = source.kindOf(listedPath);
    if (code.isEmpty())
        m_lastSkip = StockSkip::Unreadable;
    else if (format == KLineFormat::Unknown)
        m_lastSkip = StockSkip::OtherFormat;
    else if (format == KLineFormat::Default)
        readFile(source.dir + QLatin1Char('/') + code, format, series);
    else
        readFile(listedPath, format, series);
    series.code = code;
    if (m_lastSkip == StockSkip::None && series.size() <= 6)
        m_lastSkip = StockSkip::TooFewDays;
    return m_lastSkip == StockSkip::None;
}

bool StockLoader::readFile(const QString &path, KLineFormat format, StockSeries &series)
{
    series.clear();
    // K-line text is read straight into the series and parsed in place; the
    // other formats are read aside, and the series keeps only their dates.
    m_lastSkip = TextFile::readStockFile(path, format == KLineFormat::Default ? series.text() : m_bytes);
    if (m_lastSkip != StockSkip::None)
        return false;
    QString problem;
    const std::string_view bytes(m_bytes.data(), m_bytes.size());
    if (format == KLineFormat::Tdx) {
        const QString code = StockCode::fromFileName(path.section(QLatin1Char('/'), -1));
        problem =
            TdxDayReader::read(bytes, StockCode::priceDecimals(StockCode::marketOf(path), code), series);
    } else if (format == KLineFormat::Csv) {
        problem = CsvKLineReader::read(bytes, series);
    } else {
        parseKLineText(series);
    }
    if (!problem.isEmpty())
        qDebug().noquote() << "malformed file" << path + QLatin1Char(':') << problem;
    return true;
}
