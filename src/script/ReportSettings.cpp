#include "ReportSettings.h"

#include "market/DecimalNumber.h"

#include <algorithm>

bool ReportSettings::parseConfigValue(const QString &key, const QString &value)
{
    if (!key.startsWith(QLatin1String("config.report.")))
        return false;
    const double number = DecimalNumber::toDouble(QStringView(value)).value_or(0);
    const QStringView name = QStringView(key).mid(14);
    if (name == QLatin1String("capital"))
        capital = number;
    else if (name == QLatin1String("slots"))
        slotCount = DecimalNumber::toTruncatedInt(value);
    else if (name == QLatin1String("commission"))
        commission = number;
    else if (name == QLatin1String("commission.min"))
        commissionMin = number;
    else if (name == QLatin1String("stamp"))
        stamp = number;
    else if (name == QLatin1String("transfer"))
        transfer = number;
    else
        return false;
    return true;
}

double ReportSettings::buyCosts(double value) const
{
    return std::max(value * commission / 100, commissionMin) + value * transfer / 100;
}

double ReportSettings::saleCosts(double value) const { return buyCosts(value) + value * stamp / 100; }
