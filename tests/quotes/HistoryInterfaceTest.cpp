#include "LocalQuoteServer.h"
#include "quotes/StockCodeList.h"
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

    history.setOption(StockQQHistoryInterface::AdjustmentOption, QStringLiteral("qfq"));
    history.setOption(StockQQHistoryInterface::PeriodOption, QStringLiteral("week"));
    EXPECT_TRUE(history.buildUrls({"600000"})[0].contains(QStringLiteral("param=sh600000,week,,,480,qfq&")));
}

TEST(HistoryInterface, CodesWrittenWithTheirMarketAreTakenAndTheMarketComesFromTheCode)
{
    for (const char *written : {"sh600000", "SH600000", "600000.SH", "600000.sz", "sz600000"})
        EXPECT_EQ(StockCodeList::bareCode(QString::fromLatin1(written)), QStringLiteral("600000")) << written;
    for (const char *other : {"sh60000", "600000.S", "hk600000", "600000sh", "xx"})
        EXPECT_EQ(StockCodeList::bareCode(QString::fromLatin1(other)), QString::fromLatin1(other));
    // "sz600000" still asks for sh600000: the request names the market by the leading digit.
    EXPECT_TRUE(StockQQHistoryInterface(QStringLiteral("http://q.test"))
                    .buildUrls({StockCodeList::bareCode(QStringLiteral("sz600000"))})
                    .constFirst()
                    .contains(QStringLiteral("param=sh600000,")));
}
