#include "LocalQuoteServer.h"
#include "TestSupport.h"
#include "quotes/KLineDownloader.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTimer>

#include <sys/stat.h>

namespace {

using Delivery = LocalQuoteServer::Delivery;

const QByteArray kOldFile = "[[\"2023-12-29\",\"1\",\"1\",\"1\",\"1\",\"1\"]]";

// What a download reported, by code.
struct Watched {
    QStringList saved;
    QMap<QString, QString> failures;
    bool finished = false;

    explicit Watched(KLineDownloader &downloader)
    {
        QObject::connect(&downloader, &KLineDownloader::codeSaved,
                         [this](const QString &code) { saved.append(code); });
        QObject::connect(&downloader, &KLineDownloader::codeFailed,
                         [this](const QString &code, const QString &reason) { failures[code] = reason; });
        QObject::connect(&downloader, &KLineDownloader::finished, [this] { finished = true; });
    }
};

// No pause and short limits, so that no test waits for real ones.
KLineDownloader::Options quickOptions(const LocalQuoteServer &server, const QString &dataDir)
{
    KLineDownloader::Options options;
    options.dataDir = dataDir;
    options.host = server.host();
    options.pauseMs = 0;
    options.deadlineMs = 1000;
    options.silenceMs = 500;
    return options;
}

void replyWith(LocalQuoteServer &server, const QString &code, const std::vector<QuoteDay> &days,
               Delivery delivery = Delivery::Whole)
{
    const QString symbol = (code.startsWith(QLatin1Char('6')) ? "sh" : "sz") + code;
    server.setReply(symbol, {200, serviceReply(symbol, days), delivery});
}

} // namespace

TEST(Downloader, FetchesEachCodeOnceInOrderWithThePauseBetweenAndNoRetry)
{
    LocalQuoteServer server;
    replyWith(server, QStringLiteral("600000"), risingDays(8));
    server.setReply(QStringLiteral("sh600001"), {500, "busy"});
    replyWith(server, QStringLiteral("000001"), risingDays(9));
    QTemporaryDir dir;
    ASSERT_TRUE(writeTestFile(dir.filePath(QStringLiteral("600001")), kOldFile));
    KLineDownloader downloader;
    Watched watched(downloader);
    KLineDownloader::Options options = quickOptions(server, dir.path());
    options.pauseMs = 200;
    options.adjustment = QStringLiteral("qfq");

    LogCapture log;
    ASSERT_EQ(downloader.start({"600000", "600001", "000001", "600000"}, options), QString());
    ASSERT_TRUE(waitUntil([&] { return watched.finished; }));

    const std::vector<LocalQuoteServer::Request> &requests = server.requests();
    ASSERT_EQ(requests.size(), 3u);
    EXPECT_TRUE(requests[0].target.startsWith(
        "/appstock/app/fqkline/get?p=1&param=sh600000,day,,,480,qfq&_appName=android__random_suffix="));
    EXPECT_TRUE(requests[1].target.contains("param=sh600001,"));
    EXPECT_TRUE(requests[2].target.contains("param=sz000001,"));
    for (size_t i = 1; i < requests.size(); ++i)
        EXPECT_GE(requests[i].arrivalMs - requests[i - 1].arrivalMs, options.pauseMs); // never a burst

    EXPECT_EQ(watched.saved, QStringList({"600000", "000001"}));
    EXPECT_EQ(readTestFile(dir.filePath(QStringLiteral("000001"))),
              serviceReply(QStringLiteral("sz000001"), risingDays(9)));
    EXPECT_TRUE(
        watched.failures.value(QStringLiteral("600001")).contains(QLatin1String("Internal Server Error")))
        << watched.failures.value(QStringLiteral("600001")).toStdString();
    EXPECT_EQ(readTestFile(dir.filePath(QStringLiteral("600001"))), kOldFile);
    ASSERT_EQ(log.lines().size(), 1);
    EXPECT_TRUE(log.lines()[0].startsWith(QStringLiteral("下载 600001 失败: ")))
        << log.lines()[0].toStdString();
}

TEST(Downloader, ABrokenOrHostileReplyLeavesTheOldFileByteIdentical)
{
    LocalQuoteServer server;
    LocalQuoteServer elsewhere;
    const std::vector<QuoteDay> good = risingDays(8);
    std::vector<QuoteDay> repeatedDate = good, zeroPrice = good, highBelowLow = good;
    repeatedDate[4].date = repeatedDate[3].date;
    zeroPrice[2].low = 0;
    std::swap(highBelowLow[6].high, highBelowLow[6].low);
    QByteArray huge = serviceReply(QStringLiteral("sh600003"), good);
    huge.append(33 * 1024 * 1024, ' '); // still the service's JSON, only too large

    struct Case {
        const char *code;
        const char *reason;
    };
    const Case cases[] = {
        {"600001", "回复不完整"},
        {"600002", "回复不完整"},
        {"600003", "回复超过 32 MB"},
        {"600004", "回复不是 sh600004 的行情数据"},
        {"600005", "服务器转向别的网站"},
        {"600006", "回复不是 sh600006 的行情数据"},
        {"600007", "数据有误: 日期重复或未递增 / dates repeat or go back (2024-01-05)"},
        {"600008", "数据有误: 价格不大于0或不是有限数 / a price is not above 0 or not finite (2024-01-04)"},
        {"600009", "数据有误: 最高价低于最低价 / high below low (2024-01-08)"},
        {"600010", "数据有误: 不超过6天 / six days or fewer"},
        {"600011", "1 秒内没有下载完"},
        {"600012", "0.5 秒没有收到数据"},
    };
    replyWith(server, QStringLiteral("600001"), good, Delivery::CutShort);
    replyWith(server, QStringLiteral("600002"), good, Delivery::ChunkedCutShort);
    server.setReply(QStringLiteral("sh600003"), {200, huge, Delivery::Unsized});
    server.setReply(
        QStringLiteral("sh600004"),
        {200, "<html><p>sh600004 [[\"2024-01-02\",\"1\",\"1\",\"1\",\"1\",\"1\"],[\"2024-01-03\",\"1\","
              "\"1\",\"1\",\"1\",\"1\"]]</p></html>"});
    server.setReply(
        QStringLiteral("sh600005"),
        {302, {}, Delivery::Whole, "Location: " + elsewhere.host().toLatin1() + "/?param=sh600005\r\n"});
    replyWith(elsewhere, QStringLiteral("600005"), good);
    server.setReply(QStringLiteral("sh600006"), {200, serviceReply(QStringLiteral("sh600000"), good)});
    replyWith(server, QStringLiteral("600007"), repeatedDate);
    replyWith(server, QStringLiteral("600008"), zeroPrice);
    replyWith(server, QStringLiteral("600009"), highBelowLow);
    replyWith(server, QStringLiteral("600010"), risingDays(6));
    replyWith(server, QStringLiteral("600011"), good, Delivery::Drip);
    replyWith(server, QStringLiteral("600012"), good, Delivery::Stall);

    QTemporaryDir dir;
    QStringList codes;
    for (const Case &c : cases) {
        codes.append(QLatin1String(c.code));
        ASSERT_TRUE(writeTestFile(dir.filePath(codes.back()), kOldFile));
    }
    // The slow faults get short limits; the others the time that 33 MB take
    // on a busy machine.
    KLineDownloader downloader;
    Watched watched(downloader);
    KLineDownloader::Options options = quickOptions(server, dir.path());
    options.deadlineMs = 20000;
    ASSERT_EQ(downloader.start(codes.mid(0, 10), options), QString());
    ASSERT_TRUE(waitUntil([&] { return watched.finished; }, 30000));
    watched.finished = false;
    ASSERT_EQ(downloader.start(codes.mid(10), quickOptions(server, dir.path())), QString());
    ASSERT_TRUE(waitUntil([&] { return watched.finished; }));

    EXPECT_TRUE(watched.saved.isEmpty());
    for (const Case &c : cases) {
        const QString code = QLatin1String(c.code);
        EXPECT_TRUE(watched.failures.value(code).contains(QString::fromUtf8(c.reason)))
            << c.code << ": " << watched.failures.value(code).toStdString();
        EXPECT_EQ(readTestFile(dir.filePath(code)), kOldFile) << c.code;
    }
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), codes);
    EXPECT_TRUE(elsewhere.requests().empty());
}

TEST(Downloader, AStockFileThatIsALinkOrNotAFileIsNeverWrittenThrough)
{
    LocalQuoteServer server;
    for (const char *code : {"600000", "600001", "600002"})
        replyWith(server, QLatin1String(code), risingDays(8));
    QTemporaryDir work;
    const QString data = work.filePath(QStringLiteral("data"));
    const QString victim = work.filePath(QStringLiteral("outside.txt"));
    ASSERT_TRUE(QDir().mkpath(data + QStringLiteral("/600002")));
    ASSERT_TRUE(writeTestFile(victim, "precious"));
    ASSERT_TRUE(QFile::link(QStringLiteral("../outside.txt"), data + QStringLiteral("/600000")));
    ASSERT_EQ(::mkfifo(QFile::encodeName(data + QStringLiteral("/600001")).constData(), 0600), 0);

    KLineDownloader downloader;
    Watched watched(downloader);
    ASSERT_EQ(downloader.start({"600000", "600001", "600002"}, quickOptions(server, data)), QString());
    ASSERT_TRUE(waitUntil([&] { return watched.finished; }));

    EXPECT_TRUE(watched.failures.value(QStringLiteral("600000")).contains(QStringLiteral("是符号链接")));
    EXPECT_TRUE(watched.failures.value(QStringLiteral("600001")).contains(QStringLiteral("是管道")));
    EXPECT_TRUE(watched.failures.value(QStringLiteral("600002")).contains(QStringLiteral("是文件夹")));
    EXPECT_EQ(downloader.unwritten(), 3);
    EXPECT_EQ(readTestFile(victim), "precious");
    EXPECT_TRUE(QFileInfo(data + QStringLiteral("/600000")).isSymLink());
    EXPECT_EQ(QDir(data).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size(), 3);
}

TEST(Downloader, CancelStopsAtOnceMidRequestOrBetweenRequests)
{
    LocalQuoteServer server;
    replyWith(server, QStringLiteral("600000"), risingDays(8), Delivery::Drip);
    replyWith(server, QStringLiteral("600001"), risingDays(8));
    replyWith(server, QStringLiteral("600002"), risingDays(8));
    QTemporaryDir dir;
    ASSERT_TRUE(writeTestFile(dir.filePath(QStringLiteral("600000")), kOldFile));
    KLineDownloader::Options options = quickOptions(server, dir.path());
    options.deadlineMs = 60000;
    options.silenceMs = 60000;

    // Mid-request: the dripping reply is aborted, not waited for.
    KLineDownloader dripping;
    Watched first(dripping);
    QObject::connect(&dripping, &KLineDownloader::codeStarted,
                     [&] { QTimer::singleShot(3 * LocalQuoteServer::kDripMs, [&] { dripping.cancel(); }); });
    ASSERT_EQ(dripping.start({"600000", "600001"}, options), QString());
    ASSERT_TRUE(waitUntil([&] { return first.finished; }, 2000));
    EXPECT_EQ(first.failures.value(QStringLiteral("600000")), QStringLiteral("已取消"));
    EXPECT_EQ(readTestFile(dir.filePath(QStringLiteral("600000"))), kOldFile);
    EXPECT_FALSE(dripping.isRunning());

    // Between requests: what was saved stays, nothing more is asked.
    KLineDownloader pausing;
    Watched second(pausing);
    options.pauseMs = 300;
    QObject::connect(&pausing, &KLineDownloader::codeSaved, [&] { pausing.cancel(); });
    ASSERT_EQ(pausing.start({"600001", "600002"}, options), QString());
    ASSERT_TRUE(waitUntil([&] { return second.finished; }));
    EXPECT_EQ(second.saved, QStringList{"600001"});
    waitUntil([] { return false; }, options.pauseMs + 200);
    EXPECT_EQ(server.requests().size(), 2u);
}
