#include "OutputCsv.h"

#include "market/SafeFile.h"

#include <cstdio>

QString shortReal(double value)
{
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%g", value);
    return QString::fromLatin1(buffer);
}

QString outputCsvText(const TradeBook &book)
{
    QString text;
    const QChar comma = QLatin1Char(',');
    for (const auto &[date, records] : book.entries()) {
        for (const TradeRecord &r : records) {
            text += r.code + comma + r.buyDate + comma + shortReal(r.buyPrice) + comma + r.saleDate + comma +
                    shortReal(r.salePrice) + comma + QString::number(r.holdDays) + comma +
                    statusText(r.status) + QLatin1Char('\n');
        }
    }
    return text;
}

QString writeOutputCsv(const QString &path, const TradeBook &book, TextEncoding encoding)
{
    return SafeFile::replace(path, TextFile::encode(outputCsvText(book), encoding),
                             SymlinkRule::FollowToRegularFile);
}
