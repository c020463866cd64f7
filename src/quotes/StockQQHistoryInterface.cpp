#include "StockQQHistoryInterface.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QtGlobal>

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

// A number that keeps caches between us and the service from answering. The
// fraction passes through single precision as the service has always seen it.
qint64 randomSuffix()
{
    const float fraction = float(QRandomGenerator::global()->generateDouble());
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

QStringList StockQQHistoryInterface::buildUrls(const QStringList &codes) const
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

QString StockQQHistoryInterface::replyProblem(QByteArrayView body, const QString &code)
{
    // The service files a stock's lists under its market symbol; an error
    // page, a captive portal or another stock's reply has no such entry,
    // however many bracketed items it happens to hold.
    const QString symbol = marketSymbol(code);
    const QJsonDocument json = QJsonDocument::fromJson(body.toByteArray());
    if (!json.isObject() || !json.object().value(QLatin1String("data")).toObject().value(symbol).isObject())
        return QStringLiteral("回复不是 %1 的行情数据").arg(symbol);
    return {};
}

QString StockQQHistoryInterface::adjustmentOfReply(QByteArrayView head)
{
    // The service files the bars under "hfqday", "qfqweek", … and the
    // unadjusted ones under the bare period.
    if (head.contains("{\"hfq"))
        return QStringLiteral("hfq");
    if (head.contains("{\"qfq"))
        return QStringLiteral("qfq");
    if (head.contains("{\"day\"") || head.contains("{\"week\"") || head.contains("{\"month\""))
        return QStringLiteral("bfq");
    return {};
}

void StockQQHistoryInterface::setOption(int index, const QString &value)
{
    if (index == AdjustmentOption && isAdjustment(value))
        m_adjustment = value;
    else if (index == PeriodOption && isPeriod(value))
        m_period = value;
}
