#include "StrategyConfig.h"

#include "market/DecimalNumber.h"
#include "market/TextFile.h"

int StrategyConfig::parseConfigLine(const QString &line)
{
    const QStringList parts = line.split(QLatin1Char(','));
    if (parts.size() != 2)
        return -1;
    const QString &key = parts[0];
    const QString &value = parts[1];
    if (key == QLatin1String("config.source.k.dir"))
        kDir = value;
    else if (key == QLatin1String("config.source.k.format"))
        kFormat = value;
    else if (key == QLatin1String("config.trade.sale.point"))
        salePoint = value;
    else if (key == QLatin1String("config.trade.buy.order"))
        buyOrder = value;
    else if (key == QLatin1String("config.trade.sale.rapid"))
        saleRapid = value;
    else if (key == QLatin1String("config.trade.max.hold.day"))
        maxHoldDay = DecimalNumber::toTruncatedInt(value);
    else if (key == QLatin1String("config.trade.min.exclude"))
        minExclude = DecimalNumber::toTruncatedInt(value);
    else if (key == QLatin1String("config.trade.max.profit"))
        maxProfit = DecimalNumber::toFloat(value);
    else if (key == QLatin1String("config.trade.max.lost"))
        maxLost = DecimalNumber::toFloat(value);
    else if (key == QLatin1String("config.trade.max.count"))
        maxCount = DecimalNumber::toTruncatedInt(value);
    else if (key == QLatin1String("config.trade.max.allow.increase"))
        maxAllowIncrease = DecimalNumber::toFloat(value);
    else if (key == QLatin1String("config.trade.max.allow.decrease"))
        maxAllowDecrease = DecimalNumber::toFloat(value);
    else {
        // Keys added since the first release answer as a key outside the trade
        // settings does: they normalise the sale settings, so adding one to a
        // file never changes the trades. The data folder's `stocks` key is
        // otherwise unknown to this step.
        normaliseSaleSettings();
        if (key == QLatin1String("config.source.k.stocks")) {
            kStocks = value;
            return 0;
        }
        return report.parseConfigValue(key, value) || rules.parseConfigValue(key, value) ? 1 : 0;
    }
    return 1;
}

// Only an unknown key normalises the sale settings; the shipped files always
// carry one ("config.source.ticket.dir"), so they always run this.
void StrategyConfig::normaliseSaleSettings()
{
    if (salePoint != QLatin1String("open"))
        salePoint = QStringLiteral("close");
    if (saleRapid != QLatin1String("yes"))
        saleRapid = QStringLiteral("no");
}

bool StrategyConfig::loadConfigFile(const QString &path)
{
    QString text = readTextFile(path);
    if (text.isEmpty())
        text = readTextFile(QStringLiteral(":qrc/config.conf"));
    for (const QString &line : splitScriptLines(text))
        parseConfigLine(line);
    return true;
}

QStringList splitScriptLines(const QString &text)
{
    QStringList lines = text.split(QLatin1Char('\n'));
    for (QString &line : lines) {
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
    }
    return lines;
}

QString configKeywordList()
{
    return QStringLiteral("config.source.k.dir|config.source.k.format|config.trade.max.hold.day|"
                          "config.trade.min.exclude|config.trade.max.profit|config.trade.max.lost|"
                          "config.trade.max.count|config.trade.sale.point,open|"
                          "config.trade.max.allow.increase|config.trade.max.allow.decrease|"
                          "config.trade.buy.order|config.trade.sale.rapid|config.trade.sale.point|"
                          "config.source.ticket.dir");
}
