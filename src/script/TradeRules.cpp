#include "TradeRules.h"

bool TradeRules::parseConfigValue(const QString &key, const QString &value)
{
    const bool yes = value == QLatin1String("yes");
    if (key == QLatin1String("config.trade.t1"))
        t1 = yes;
    else if (key == QLatin1String("config.trade.limit"))
        limit = yes ? Limit::Cents : value == QLatin1String("adjusted") ? Limit::Adjusted : Limit::Off;
    else if (key == QLatin1String("config.trade.limit.st"))
        stCodes = value.split(QLatin1Char('|'), Qt::SkipEmptyParts);
    else if (key == QLatin1String("config.trade.stop.intraday"))
        stopIntraday = yes;
    else
        return false;
    return true;
}

TradeRules TradeRules::withEveryRule() const
{
    TradeRules rules = *this;
    rules.t1 = true;
    rules.limit = Limit::Cents;
    rules.stopIntraday = true;
    return rules;
}

QStringList ruleKeywordList()
{
    return {QStringLiteral("config.trade.t1"), QStringLiteral("config.trade.limit"),
            QStringLiteral("config.trade.limit.st"), QStringLiteral("config.trade.stop.intraday")};
}
