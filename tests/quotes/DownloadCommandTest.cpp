#include "LocalQuoteServer.h"
#include "TestSupport.h"
#include "cli/CliRun.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace {

// Runs orvel-cli while our event loop keeps the local server answering.
CliRun runServed(const QStringList &arguments, const QString &workingDirectory, const QString &quoteHost = {})
{
    ensureApplication();
    QProcess process;
    process.setWorkingDirectory(workingDirectory);
    if (!quoteHost.isEmpty()) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("ORVEL_QUOTE_HOST"), quoteHost);
        process.setProcessEnvironment(environment);
    }
    process.start(QStringLiteral(ORVEL_CLI), arguments);
    const bool ended = waitUntil([&process] { return process.state() == QProcess::NotRunning; }, 60000);
    return {ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

} // namespace

TEST(DownloadCommand, SavesWhatTheServiceSentUnderEachCode)
{
    LocalQuoteServer server;
    const QByteArray first = serviceReply(QStringLiteral("sh600000"), risingDays(30));
    const QByteArray second = serviceReply(QStringLiteral("sz000001"), risingDays(20));
    server.setReply(QStringLiteral("sh600000"), {200, first});
    server.setReply(QStringLiteral("sz000001"), {200, second});
    QTemporaryDir work;
    const QString data = work.filePath(QStringLiteral("market"));

    const CliRun run = runServed(
        {"download", "600000", "000001", "--data", data, "--adjust", "qfq", "--host", server.host()},
        work.path());
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.contains(QStringLiteral("[1/2] 600000"))) << run.out.toStdString();
    EXPECT_TRUE(run.out.contains(QStringLiteral("[2/2] 000001")));
    EXPECT_TRUE(run.out.contains(QStringLiteral("2 个已保存 / saved, 0 个失败")));
    EXPECT_EQ(readTestFile(data + QStringLiteral("/600000")), first);
    EXPECT_EQ(readTestFile(data + QStringLiteral("/000001")), second);
    EXPECT_TRUE(server.requests()[0].target.contains("param=sh600000,day,,,480,qfq&"));
    EXPECT_EQ(QDir(data).entryList(QDir::Files).size(), 2); // no temporary file left behind
}

TEST(DownloadCommand, FailedAndRefusedCodesExitWithFourAndLeaveEveryFileAsItWas)
{
    LocalQuoteServer server;
    server.setReply(QStringLiteral("sh600001"), {404, "no such page"});
    // The working folder sits inside one of our own, so that "../x" would land where we look.
    QTemporaryDir outer;
    const QDir work(outer.filePath(QStringLiteral("work")));
    QDir().mkpath(work.path());
    const QString data = work.filePath(QStringLiteral("data")); // the configured default
    QDir().mkpath(data);
    const QByteArray previous = "[[\"2023-12-29\",\"1\",\"1\",\"1\",\"1\",\"1\"]]";
    ASSERT_TRUE(writeTestFile(data + QStringLiteral("/600001"), previous));
    ASSERT_TRUE(
        writeTestFile(work.filePath(QStringLiteral("codes.txt")), "600001\n../../x 60000a, sh600004\n"));

    const CliRun run = runServed({"download", "--codes-file", "codes.txt"}, work.path(), server.host());
    EXPECT_EQ(run.exitCode, 4);
    EXPECT_TRUE(run.err.contains(QStringLiteral("\"../../x\""))) << run.err.toStdString();
    EXPECT_TRUE(run.err.contains(QStringLiteral("\"60000a\"")));
    EXPECT_TRUE(run.err.contains(QStringLiteral("\"sh600004\"")));
    EXPECT_TRUE(run.out.contains(QStringLiteral("0 个已保存 / saved, 4 个失败"))) << run.out.toStdString();
    EXPECT_EQ(server.requests().size(), 1u);
    EXPECT_EQ(readTestFile(data + QStringLiteral("/600001")), previous);
    EXPECT_EQ(QDir(data).entryList(QDir::Files).size(), 1);
    EXPECT_FALSE(QFile::exists(outer.filePath(QStringLiteral("x"))));
}

TEST(DownloadCommand, AnUnwritableDataDirectoryOrStockFileExitsWithFive)
{
    LocalQuoteServer server;
    server.setReply(QStringLiteral("sh600000"),
                    {200, serviceReply(QStringLiteral("sh600000"), risingDays(8))});
    QTemporaryDir work;
    ASSERT_TRUE(writeTestFile(work.filePath(QStringLiteral("blocked")), "a file, not a folder"));

    CliRun run = runServed({"download", "600000", "--data", "blocked"}, work.path(), server.host());
    EXPECT_EQ(run.exitCode, 5);
    EXPECT_TRUE(run.err.contains(QStringLiteral("无法建立数据目录 blocked"))) << run.err.toStdString();
    EXPECT_TRUE(server.requests().empty());

    ASSERT_TRUE(QDir(work.path()).mkdir(QStringLiteral("data")));
    ASSERT_TRUE(writeTestFile(work.filePath(QStringLiteral("victim")), "precious"));
    ASSERT_TRUE(QFile::link(QStringLiteral("../victim"), work.filePath(QStringLiteral("data/600000"))));
    run = runServed({"download", "600000"}, work.path(), server.host());
    EXPECT_EQ(run.exitCode, 5);
    EXPECT_TRUE(run.out.contains(QStringLiteral("无法写入 data/600000: 是符号链接")))
        << run.out.toStdString();
    EXPECT_EQ(readTestFile(work.filePath(QStringLiteral("victim"))), "precious");
}

TEST(DownloadCommand, BadOptionsAreUsageErrorsBeforeAnyRequest)
{
    QTemporaryDir work;
    const QList<QStringList> cases = {
        {"600000", "--adjust", "xfq"}, {"600000", "--period", "year"}, {}, {"--codes-file", "missing.txt"}};
    for (const QStringList &arguments : cases) {
        const CliRun run =
            runServed(QStringList{"download"} + arguments, work.path(), LocalQuoteServer::refusingHost());
        EXPECT_EQ(run.exitCode, 1) << arguments.join(' ').toStdString();
        EXPECT_FALSE(run.out.contains(QStringLiteral("[1/"))) << arguments.join(' ').toStdString();
    }
}

// The command lives in a plugin beside the program; a program copied away
// from it says so and exits as a failed download.
TEST(DownloadCommand, WithoutItsPluginTheProgramSaysSoAndExitsWithFour)
{
    QTemporaryDir work;
    const QString lonely = work.filePath(QStringLiteral("orvel-cli"));
    ASSERT_TRUE(QFile::copy(QStringLiteral(ORVEL_CLI), lonely));
    QProcess process;
    process.start(lonely, {"download", "600000", "--data", work.path()});
    ASSERT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitCode(), 4);
    EXPECT_TRUE(QString::fromUtf8(process.readAllStandardError()).contains(QStringLiteral("download module")));
    EXPECT_EQ(QDir(work.path()).entryList(QDir::Files), QStringList{QStringLiteral("orvel-cli")});
}
