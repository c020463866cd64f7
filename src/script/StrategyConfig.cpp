#include "StrategyConfig.h"

#include "market/DecimalNumber.h"
#include "market/TextFile.h"

namespace {

float readFloat(const QString &text) { return DecimalNumber::toFloat(text); }
int readTruncatedInt(const QString &text) { return DecimalNumber::toTruncatedInt(text); }

using Store = void (*)(StrategyConfig &, const QString &);

struct KeyEntry {
    QLatin1String key;
    Store store;
};

const KeyEntry kKeys[] = {
    {QLatin1String("config.source.k.dir"), [](StrategyConfig &c, const QString &v) { c.kDir = v; }},
    {QLatin1String("config.source.k.format"), [](StrategyConfig &c, const QString &v) { c.kFormat = v; }},
    {QLatin1String("config.trade.sale.point"),
     [](StrategyConfig &c, const QString &v) {
         c.salePoint = v == QLatin1String("close")  ? SalePoint::Close
                       : v == QLatin1String("open") ? SalePoint::Open
                                                    : SalePoint::Unset;
     }},
    {QLatin1String("config.trade.buy.order"),
     [](StrategyConfig &c, const QString &v) {
         c.buyOrder = v == QLatin1String("desc") ? BuyOrder::Descending : BuyOrder::Ascending;
     }},
    {QLatin1String("config.trade.sale.rapid"),
     [](StrategyConfig &c, const QString &v) {
         c.saleRapid = v == QLatin1String("yes") ? RapidSale::Yes : RapidSale::No;
     }},
    {QLatin1String("config.trade.max.hold.day"),
     [](StrategyConfig &c, const QString &v) { c.maxHoldDay = readTruncatedInt(v); }},
    {QLatin1String("config.trade.min.exclude"),
     [](StrategyConfig &c, const QString &v) { c.minExclude = readTruncatedInt(v); }},
    {QLatin1String("config.trade.max.profit"),
     [](StrategyConfig &c, const QString &v) { c.maxProfit = readFloat(v); }},
    {QLatin1String("config.trade.max.lost"),
     [](StrategyConfig &c, const QString &v) { c.maxLost = readFloat(v); }},
    {QLatin1String("config.trade.max.count"),
     [](StrategyConfig &c, const QString &v) { c.maxCount = readTruncatedInt(v); }},
    {QLatin1String("config.trade.max.allow.increase"),
     [](StrategyConfig &c, const QString &v) { c.maxAllowIncrease = readFloat(v); }},
    {QLatin1String("config.trade.max.allow.decrease"),
     [](StrategyConfig &c, const QString &v) { c.maxAllowDecrease = readFloat(v); }},
};

} // namespace

int StrategyConfig::parseConfigLine(const QString &line)
{
    const QStringList parts = line.split(QLatin1Char(','));
    if (parts.size() != 2)
        return -1;
    for (const KeyEntry &entry : kKeys) {
        if (parts[0] == entry.key) {
            entry.store(*this, parts[1]);
            return 1;
        }
    }
    // Keys added since the first release answer as a key outside the trade
    // settings does: they normalise the sale settings, so adding one to a
    // file never changes the trades. The data folder's `stocks` key is
    // otherwise unknown to this step.
    normaliseSaleSettings();
    if (parts[0] == QLatin1String("config.source.k.stocks")) {
        kStocks = parts[1];
        return 0;
    }
    return report.parseConfigValue(parts[0], parts[1]) || rules.parseConfigValue(parts[0], parts[1]) ? 1 : 0;
}

void StrategyConfig::applyLines(const QString &text)
{
    for (const QString &line : splitScriptLines(text))
        parseConfigLine(line);
}

// Only an unknown key normalises the sale settings; the shipped files always
// carry one ("config.source.ticket.dir"), so they always run this.
void StrategyConfig::normaliseSaleSettings()
{
    if (salePoint != SalePoint::Open)
        salePoint = SalePoint::Close;
}

bool StrategyConfig::loadConfigFile(const QString &path)
{
    applyLines(configFileText(path));
    return true;
}

QString StrategyConfig::configFileText(const QString &path)
{
    QString text = readTextFile(path);
    if (text.isEmpty())
        text = readTextFile(QStringLiteral(":qrc/config.conf"));
    return text;
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
