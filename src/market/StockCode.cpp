#include "StockCode.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

namespace StockCode {
namespace {

const QStringList kMarkets{QStringLiteral("sh"), QStringLiteral("sz"), QStringLiteral("bj")};

QString knownMarket(const QString &text)
{
    const QString lower = text.toLower();
    return kMarkets.contains(lower) ? lower : QString();
}

} // namespace

QString fromFileName(const QString &fileName)
{
    static const QRegularExpression sixDigits(QStringLiteral("(?<![0-9])[0-9]{6}(?![0-9])"));
    const QRegularExpressionMatch match = sixDigits.match(fileName);
    return match.hasMatch() ? match.captured() : QString();
}

QString marketOf(const QString &path)
{
    const QFileInfo info(path);
    const QString name = info.fileName();
    if (QString market = knownMarket(name.left(2)); !market.isEmpty())
        return market;
    const QStringList parts = name.split(QLatin1Char('.'));
    if (parts.size() >= 3)
        if (QString market = knownMarket(parts[parts.size() - 2]); !market.isEmpty())
            return market;
    QDir folder = info.dir();
    if (folder.dirName().compare(QLatin1String("lday"), Qt::CaseInsensitive) == 0 && folder.cdUp())
        return knownMarket(folder.dirName());
    return {};
}

bool isAShareStock(const QString &market, const QString &code)
{
    if (code.size() != 6)
        return false;
    const auto startsWithAny = [&code](std::initializer_list<const char *> prefixes) {
        for (const char *prefix : prefixes)
            if (code.startsWith(QLatin1String(prefix)))
                return true;
        return false;
    };
    const bool sh = startsWithAny({"60", "68"});
    const bool sz = startsWithAny({"00", "30"});
    const bool bj = startsWithAny({"43", "83", "87", "920"});
    if (market == QLatin1String("sh"))
        return sh;
    if (market == QLatin1String("sz"))
        return sz;
    if (market == QLatin1String("bj"))
        return bj;
    return sh || sz || bj;
}

int priceDecimals(const QString &market, const QString &code)
{
    const QChar first = code.isEmpty() ? QChar() : code.front();
    if (market.isEmpty())
        return first == QLatin1Char('5') || first == QLatin1Char('1') ? 3 : 2;
    const bool fund = (market == QLatin1String("sh") && first == QLatin1Char('5')) ||
                      (market == QLatin1String("sz") && first == QLatin1Char('1'));
    return fund ? 3 : 2;
}

} // namespace StockCode
