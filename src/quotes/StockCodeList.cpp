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

QStringList split(const QString &text)
{
    static const QRegularExpression separators(QStringLiteral("[\\s,;，；]+"));
    return text.split(separators, Qt::SkipEmptyParts);
}

} // namespace StockCodeList
