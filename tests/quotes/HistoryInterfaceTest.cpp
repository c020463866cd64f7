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
    history.setOption(7, QStringLiteral("qfq")); // no such option
    EXPECT_TRUE(history.buildUrls({"600000"})[0].contains(QStringLiteral("param=sh600000,day,,,480,hfq&")));

    history.setOption(StockQQHistoryInterface::AdjustmentOption, QStringLiteral("qfq"));
    history.setOption(StockQQHistoryInterface::PeriodOption, QStringLiteral("week"));
    EXPECT_TRUE(history.buildUrls({"600000"})[0].contains(QStringLiteral("param=sh600000,week,,,480,qfq&")));
}
