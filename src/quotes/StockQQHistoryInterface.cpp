#include "StockQQHistoryInterface.h"

#include "market/KLineParser.h"

#include <QtGlobal>

#include <cstdlib>

namespace {

const char kPublicHost[] = "https://web.ifzq.gtimg.cn";

// The service answers to exactly this query; the missing "&" before
// "_random_suffix" and the fixed count of 480 bars are part of what it expects.
const QString &requestTemplate()
{
    static const QString text = QStringLiteral(
        "/appstock/app/fqkline/get?p=1&param=%1,%2,,,480,%3&_appName=android__random_suffix=%4");
    return text;
}

// A number that keeps caches between us and the service from answering.
qint64 randomSuffix()
{
    const float fraction = float(double(std::rand()) * 4.656612873077393e-10);
    return qint64(double(fraction) * 2147483648.0);
}

} // namespace

StockQQHistoryInterface::StockQQHistoryInterface(const QString &host)
    : m_host(host.isEmpty() ? defaultHost() : host)
{
    while (m_host.endsWith(QLatin1Char('/')))
        m_host.chop(1);
}

QString StockQQHistoryInterface::defaultHost()
{
    const QString configured = qEnvironmentVariable("ORVEL_QUOTE_HOST");
    return configured.isEmpty() ? QString::fromLatin1(kPublicHost) : configured;
}

QString StockQQHistoryInterface::marketSymbol(const QString &code)
{
    return (code.startsWith(QLatin1Char('6')) ? QStringLiteral("sh") : QStringLiteral("sz")) + code;
}

bool StockQQHistoryInterface::isAdjustment(const QString &value)
{
    return value == QLatin1String("bfq") || value == QLatin1String("qfq") || value == QLatin1String("hfq");
}

bool StockQQHistoryInterface::isPeriod(const QString &value)
{
    return value == QLatin1String("day") || value == QLatin1String("week") || value == QLatin1String("month");
}

QStringList StockQQHistoryInterface::buildUrls(const QStringList &codes)
{
    QStringList urls;
    urls.reserve(codes.size());
    for (const QString &code : codes)
        urls.append(urlFor(code));
    return urls;
}

QString StockQQHistoryInterface::urlFor(const QString &code) const
{
    // One multi-argument arg(): a "%" inside the code cannot be taken for a
    // later placeholder.
    return m_host +
           requestTemplate().arg(marketSymbol(code), m_period, m_adjustment, QString::number(randomSuffix()));
}

StockSeries StockQQHistoryInterface::parse(QByteArrayView body)
{
    StockSeries series;
    parseKLineText(std::string_view(body.data(), size_t(body.size())), series);
    series.code = m_code;
    return series;
}

void StockQQHistoryInterface::setOption(int index, const QString &value)
{
    if (index == CodeOption)
        m_code = value;
    else if (index == AdjustmentOption && isAdjustment(value))
        m_adjustment = value;
    else if (index == PeriodOption && isPeriod(value))
        m_period = value;
}
