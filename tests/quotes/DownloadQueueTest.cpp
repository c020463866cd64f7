#include "LocalQuoteServer.h"
#include "TestSupport.h"
#include "quotes/IterateDataLoader.h"
#include "quotes/KLineDownloader.h"
#include "quotes/LoopDataLoader.h"
#include "quotes/StockQQHistoryInterface.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

namespace {

// What a queue published, in order.
struct Published {
    std::vector<SharedStockSeries> stocks;
    QStringList failures; // tags
    QStringList started;  // tags
    bool ok = false;

    explicit Published(DataLoader &loader)
    {
        QObject::connect(&loader, &DataLoader::sendStock,
                         [this](const SharedStockSeries &s) { stocks.push_back(s); });
        QObject::connect(&loader, &DataLoader::requestFailed,
                         [this](const QString &, const QString &tag) { failures.append(tag); });
        QObject::connect(&loader, &DataLoader::requestStarted,
                         [this](const QString &, const QString &tag) { started.append(tag); });
        QObject::connect(&loader, &DataLoader::sendOK, [this] { ok = true; });
    }
};

// A loader for `codes` on `host`, parsing through the history interface.
template <class Loader>
void prepare(Loader &loader, const QString &host, const QStringList &codes)
{
    auto history = std::make_unique<StockQQHistoryInterface>(host);
    loader.setUrls(history->buildUrls(codes), codes);
    loader.setHistoryInterface(std::move(history));
}

} // namespace

TEST(DownloadQueue, FetchesEachUrlOnceInOrderWithTheFixedPauseBetween)
{
    LocalQuoteServer server;
    server.setReply(QStringLiteral("sh600000"),
                    {200, serviceReply(QStringLiteral("sh600000"), risingDays(8))});
    server.setReply(QStringLiteral("sz000001"),
                    {200, serviceReply(QStringLiteral("sz000001"), risingDays(3))});
    IterateDataLoader loader;
    prepare(loader, server.host(), {"600000", "000001"});
    Published published(loader);
    loader.startNextDownload();
    ASSERT_TRUE(waitUntil([&] { return published.ok; }));

    ASSERT_EQ(server.requests().size(), 2u);
    EXPECT_TRUE(server.requests()[0].target.startsWith(
        "/appstock/app/fqkline/get?p=1&param=sh600000,day,,,480,hfq&_appName=android__random_suffix="));
    EXPECT_TRUE(server.requests()[1].target.contains("param=sz000001,day,,,480,hfq&"));
    const qint64 gap = server.requests()[1].arrivalMs - server.requests()[0].arrivalMs;
    EXPECT_GE(gap, 1500); // the service must never see a burst
    EXPECT_LT(gap, 4000);

    ASSERT_EQ(published.stocks.size(), 2u);
    EXPECT_EQ(published.stocks[0]->code, QStringLiteral("600000"));
    EXPECT_EQ(published.stocks[0]->size(), 8);
    EXPECT_EQ(published.stocks[1]->code, QStringLiteral("000001"));
    EXPECT_EQ(published.stocks[1]->bars.back().date, "2024-01-04");
}

TEST(DownloadQueue, FailuresGoToTheDebugOutputAndTheQueueMovesOnWithoutRetry)
{
    LocalQuoteServer server;
    server.setReply(QStringLiteral("sh600001"), {500, "busy"});
    server.setReply(QStringLiteral("sh600002"),
                    {200, serviceReply(QStringLiteral("sh600002"), risingDays(7))});
    const QStringList codes = {"600001", "600009", "600002"};
    QStringList urls = StockQQHistoryInterface(server.host()).buildUrls(codes);
    urls[1] = StockQQHistoryInterface(LocalQuoteServer::refusingHost()).buildUrls({"600009"})[0];
    IterateDataLoader loader;
    loader.setUrls(urls, codes);
    loader.setHistoryInterface(std::make_unique<StockQQHistoryInterface>(server.host()));
    Published published(loader);

    LogCapture log;
    loader.startNextDownload();
    ASSERT_TRUE(waitUntil([&] { return published.ok; }));

    EXPECT_EQ(server.requests().size(), 2u); // the refused one never arrived, nothing was asked twice
    EXPECT_EQ(published.failures, QStringList({"600001", "600009"}));
    ASSERT_EQ(log.lines().size(), 2);
    EXPECT_TRUE(log.lines()[0].contains(QStringLiteral("Internal Server Error")))
        << log.lines()[0].toStdString();
    EXPECT_TRUE(log.lines()[1].contains(QStringLiteral("refused"))) << log.lines()[1].toStdString();
    ASSERT_EQ(published.stocks.size(), 1u);
    EXPECT_EQ(published.stocks[0]->code, QStringLiteral("600002"));
}

TEST(DownloadQueue, TheLoopQueueTurnsItsListAndNeverEnds)
{
    LocalQuoteServer server;
    for (const char *symbol : {"sh600000", "sz000002"})
        server.setReply(QString::fromLatin1(symbol),
                        {200, serviceReply(QString::fromLatin1(symbol), risingDays(7))});
    LoopDataLoader loader;
    prepare(loader, server.host(), {"600000", "000002"});
    Published published(loader);
    loader.startNextDownload();
    ASSERT_TRUE(waitUntil([&] { return published.stocks.size() == 3; }));

    EXPECT_EQ(published.started, QStringList({"600000", "000002", "600000"}));
    ASSERT_EQ(server.requests().size(), 3u);
    EXPECT_TRUE(server.requests()[2].target.contains("param=sh600000,"));
    EXPECT_EQ(published.stocks[2]->code, QStringLiteral("600000"));
    EXPECT_EQ(loader.pendingUrls().size(), 2);
    EXPECT_FALSE(published.ok);
}

TEST(Downloader, CancelStopsBetweenRequests)
{
    LocalQuoteServer server;
    for (const char *symbol : {"sh600000", "sh600001"})
        server.setReply(QString::fromLatin1(symbol),
                        {200, serviceReply(QString::fromLatin1(symbol), risingDays(9))});
    QTemporaryDir dir;
    KLineDownloader downloader;
    int saved = -1;
    bool finished = false;
    QObject::connect(&downloader, &KLineDownloader::codeSaved, [&] { downloader.cancel(); });
    QObject::connect(&downloader, &KLineDownloader::finished, [&](int savedCodes, int) {
        saved = savedCodes;
        finished = true;
    });
    KLineDownloader::Options options;
    options.dataDir = dir.path();
    options.host = server.host();
    downloader.start({"600000", "600001"}, options);
    ASSERT_TRUE(waitUntil([&] { return finished; }));

    EXPECT_EQ(saved, 1);
    EXPECT_FALSE(downloader.isRunning());
    waitUntil([] { return false; }, DataLoader::kPauseMs + 300);
    EXPECT_EQ(server.requests().size(), 1u);
}
