#include "StockCodeList.h"

#include <QRegularExpression>

namespace StockCodeList {

bool isStockCode(const QString &text)
{
    if (text.size() != 6)
        return false;
    for (const QChar c : text) {
        if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            return false;
    }
    return true;
}

QString bareCode(const QString &text)
{
    const auto isMarket = [](QStringView market) {
        return market.compare(QLatin1String("sh"), Qt::CaseInsensitive) == 0 ||
               market.compare(QLatin1String("sz"), Qt::CaseInsensitive) == 0;
    };
    if (text.size() == 8 && isMarket(QStringView(text).left(2)) && isStockCode(text.mid(2)))
        return text.mid(2);
    if (text.size() == 9 && text.at(6) == QLatin1Char('.') && isMarket(QStringView(text).mid(7)) &&
        isStockCode(text.left(6)))
        return text.left(6);
    return text;
}

QStringList split(const QString &text)
{
    static const QRegularExpression separators(QStringLiteral("[\\s,;，；]+"));
    return text.split(separators, Qt::SkipEmptyParts);
}

} // namespace StockCodeList
