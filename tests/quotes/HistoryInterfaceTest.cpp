#include "LocalQuoteServer.h"
#include "quotes/StockQQHistoryInterface.h"

#include <gtest/gtest.h>

#include <QRegularExpression>

namespace {

// The query part that stays the same between requests; the suffix is random.
QString fixedPart(const QString &url)
{
    const qsizetype at = url.lastIndexOf(QLatin1Char('='));
    return url.left(at + 1);
}

QString suffixOf(const QString &url)
{
    return url.mid(url.lastIndexOf(QLatin1Char('=')) + 1);
}

} // namespace

TEST(HistoryInterface, UrlsCarryTheQueryExactlyAsTheServiceExpectsIt)
{
    StockQQHistoryInterface history(QStringLiteral("http://quotes.test/"));
    const QStringList urls = history.buildUrls({"600000", "300001", "000001"});
    ASSERT_EQ(urls.size(), 3);
    EXPECT_EQ(fixedPart(urls[0]), QStringLiteral("http://quotes.test/appstock/app/fqkline/get?p=1&param="
                                                 "sh600000,day,,,480,hfq&_appName=android__random_suffix="));
    EXPECT_TRUE(urls[1].contains(QStringLiteral("param=sz300001,day,,,480,hfq&")));
    EXPECT_TRUE(urls[2].contains(QStringLiteral("param=sz000001,")));
    for (const QString &url : urls) {
        bool ok = false;
        const qint64 suffix = suffixOf(url).toLongLong(&ok);
        EXPECT_TRUE(ok && suffix >= 0 && suffix <= 2147483648LL) << url.toStdString();
    }
}

TEST(HistoryInterface, OnlyKnownAdjustmentsAndPeriodsAreTaken)
{
    StockQQHistoryInterface history(QStringLiteral("http://quotes.test"));
    history.setOption(StockQQHistoryInterface::AdjustmentOption, QStringLiteral("xfq"));
    history.setOption(StockQQHistoryInterface::PeriodOption, QStringLiteral("year"));
    history.setOption(7, QStringLiteral("qfq"));
    EXPECT_TRUE(history.buildUrls({"600000"})[0].contains(QStringLiteral("param=sh600000,day,,,480,hfq&")));

    history.setOption(StockQQHistoryInterface::AdjustmentOption, QStringLiteral("qfq"));
    history.setOption(StockQQHistoryInterface::PeriodOption, QStringLiteral("week"));
    EXPECT_TRUE(history.buildUrls({"600000"})[0].contains(QStringLiteral("param=sh600000,week,,,480,qfq&")));
}

TEST(HistoryInterface, TheHostComesFromTheEnvironmentUnlessGiven)
{
    qputenv("ORVEL_QUOTE_HOST", "http://127.0.0.1:9");
    EXPECT_TRUE(StockQQHistoryInterface().buildUrls({"600000"})[0].startsWith(
        QStringLiteral("http://127.0.0.1:9/appstock/")));
    EXPECT_TRUE(StockQQHistoryInterface(QStringLiteral("http://other.test")).host() ==
                QStringLiteral("http://other.test"));
    qunsetenv("ORVEL_QUOTE_HOST");
    EXPECT_TRUE(StockQQHistoryInterface().host().startsWith(QStringLiteral("https://")));
}

TEST(HistoryInterface, AReplyInTheServiceFramingGivesItsBarsInOrder)
{
    StockQQHistoryInterface history(QStringLiteral("http://quotes.test"));
    history.setOption(StockQQHistoryInterface::CodeOption, QStringLiteral("600000"));
    QByteArray body =
        serviceReply(QStringLiteral("sh600000"), {{"2015-01-05", 10.00, 10.50, 10.80, 9.90, 123456},
                                                  {"2015-01-06", 10.50, 10.40, 10.60, 10.30, 1000}});
    // A record with five fields is dropped and does not count as the day before.
    body.replace("[\"2015-01-06\"", "[\"2015-01-05x\",\"1\",\"2\",\"3\",\"4\"],[\"2015-01-06\"");

    const StockSeries series = history.parse(body);
    EXPECT_EQ(series.code, QStringLiteral("600000"));
    ASSERT_EQ(series.size(), 2);
    const Stock &first = series.bars[0];
    EXPECT_EQ(first.date, "2015-01-05");
    EXPECT_FLOAT_EQ(first.open, 10.00f);
    EXPECT_FLOAT_EQ(first.close, 10.50f);
    EXPECT_FLOAT_EQ(first.high, 10.80f);
    EXPECT_FLOAT_EQ(first.low, 9.90f);
    EXPECT_FLOAT_EQ(first.volume, 123456.0f);
    EXPECT_FLOAT_EQ(first.change, 11.50f); // against the starting -1
    EXPECT_EQ(series.bars[1].date, "2015-01-06");
    EXPECT_FLOAT_EQ(series.bars[1].change, 10.40f - 10.50f);

    EXPECT_EQ(history.parse("{\"code\":-1,\"msg\":\"param error\"}").size(), 0);
}
