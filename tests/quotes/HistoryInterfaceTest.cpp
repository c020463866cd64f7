#include "LocalQuoteServer.h"
#include "quotes/StockQQHistoryInterface.h"

#include <gtest/gtest.h>

TEST(HistoryInterface, UrlsCarryTheQueryExactlyAsTheServiceExpectsIt)
{
    StockQQHistoryInterface history(QStringLiteral("http://quotes.test/"));
    const QStringList urls = history.buildUrls({"600000", "300001"});
    ASSERT_EQ(urls.size(), 2);
    const QString fixed = QStringLiteral("http://quotes.test/appstock/app/fqkline/get?p=1&param="
                                         "sh600000,day,,,480,hfq&_appName=android__random_suffix=");
    ASSERT_TRUE(urls[0].startsWith(fixed)) << urls[0].toStdString();
    bool isNumber = false;
    const qint64 suffix = urls[0].mid(fixed.size()).toLongLong(&isNumber);
    EXPECT_TRUE(isNumber && suffix >= 0 && suffix <= 2147483648LL) << urls[0].toStdString();
    EXPECT_TRUE(urls[1].contains(QStringLiteral("param=sz300001,day,,,480,hfq&")));
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

TEST(HistoryInterface, AReplyInTheServiceFramingGivesItsBars)
{
    StockQQHistoryInterface history(QStringLiteral("http://quotes.test"));
    history.setOption(StockQQHistoryInterface::CodeOption, QStringLiteral("600000"));
    QByteArray body =
        serviceReply(QStringLiteral("sh600000"), {{"2015-01-05", 10.00, 10.50, 10.80, 9.90, 123456},
                                                  {"2015-01-06", 10.50, 10.40, 10.60, 10.30, 1000}});
    body.replace("[\"2015-01-06\"",
                 "[\"2015-01-05x\",\"1\",\"2\",\"3\",\"4\"],[\"2015-01-06\""); // five fields

    const StockSeries series = history.parse(body);
    EXPECT_EQ(series.code, QStringLiteral("600000"));
    ASSERT_EQ(series.size(), 2);
    const Stock &first = series.bars[0];
    EXPECT_EQ(first.date, "2015-01-05");
    EXPECT_EQ((std::vector<float>{first.open, first.close, first.high, first.low, first.volume}),
              (std::vector<float>{10.00f, 10.50f, 10.80f, 9.90f, 123456.0f}));
    EXPECT_EQ(series.bars[1].date, "2015-01-06");
    EXPECT_EQ(history.parse("{\"code\":-1,\"msg\":\"param error\"}").size(), 0);
}
