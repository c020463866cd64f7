#include "CliRun.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

namespace {

CliRun backtestInto(const QTemporaryDir &dir, const QString &out)
{
    return runCli({"backtest", writeScript(dir, "buy.close,0>open,0"), "--data", kSampleData, "--out", out,
                   "--jobs", "1"},
                  dir.path());
}

} // namespace

TEST(OutputFiles, ADeviceOrFifoGivenAsOutputIsRefusedAndLeftAlone)
{
    QTemporaryDir dir;
    const QStringList nodes = makeSpecialNodes(dir.path());
    ASSERT_FALSE(nodes.isEmpty());
    for (const QString &node : nodes) {
        const CliRun run = backtestInto(dir, node);
        EXPECT_EQ(run.exitCode, 5);
        EXPECT_TRUE(run.err.contains(QStringLiteral("not a regular file"))) << run.err.toStdString();
        EXPECT_TRUE(run.out.startsWith(QStringLiteral("买卖次数:"))) << run.out.toStdString();
        const QFileInfo info(node);
        EXPECT_TRUE(info.exists() && !info.isFile() && !info.isSymLink()) << node.toStdString();
    }
    // Nothing was left beside them either.
    EXPECT_EQ(QDir(dir.path()).entryList({"fifo*", "device*"}, QDir::AllEntries | QDir::System).size(),
              nodes.size());
}

TEST(OutputFiles, ALinkedOutputReplacesTheFileItNamesAndStaysALink)
{
    QTemporaryDir dir;
    QDir(dir.path()).mkdir(QStringLiteral("results"));
    const QString real = dir.filePath(QStringLiteral("results/trades.csv"));
    const QString link = dir.filePath(QStringLiteral("output.csv"));
    writeTestFile(real, "old");
    ASSERT_TRUE(QFile::link(real, link));
    const CliRun run = backtestInto(dir, link);
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_TRUE(readTestFile(real).startsWith("000")) << readTestFile(real).left(40).toStdString();
}

TEST(OutputFiles, AnOutputThatCannotBeWrittenEndsWithExitFiveAfterTheSummary)
{
    QTemporaryDir dir;
    QDir(dir.path()).mkdir(QStringLiteral("folder"));
    for (const QString &out : {dir.filePath(QStringLiteral("missing/output.csv")), dir.filePath("folder")}) {
        const CliRun run = backtestInto(dir, out);
        EXPECT_EQ(run.exitCode, 5) << out.toStdString();
        EXPECT_TRUE(run.out.startsWith(QStringLiteral("买卖次数:"))) << run.out.toStdString();
        EXPECT_TRUE(run.err.contains(QStringLiteral("无法写入 / cannot write ") + out))
            << run.err.toStdString();
    }
    EXPECT_FALSE(QFileInfo::exists(dir.filePath(QStringLiteral("missing"))));
}

TEST(OutputFiles, RunningOutOfMemoryEndsWithExitSixAndNoCrash)
{
    QTemporaryDir dir;
    QDir(dir.path()).mkdir(QStringLiteral("data"));
    // A file the run may read but not hold under a 200 MB address-space limit.
    QFile big(dir.filePath(QStringLiteral("data/600000")));
    ASSERT_TRUE(big.open(QIODevice::WriteOnly) && big.resize(qint64(250) << 20));
    big.close();
    QProcess shell;
    shell.setWorkingDirectory(dir.path());
    shell.start(QStringLiteral("/bin/sh"),
                {"-c", QStringLiteral("ulimit -v 200000; exec \"%1\" backtest \"%2\" "
                                      "--data data --jobs 1")
                           .arg(QStringLiteral(ORVEL_CLI), writeScript(dir, "buy.close,0>open,0"))});
    ASSERT_TRUE(shell.waitForFinished(60000));
    EXPECT_EQ(shell.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(shell.exitCode(), 6);
    EXPECT_TRUE(QString::fromUtf8(shell.readAllStandardError()).contains(QStringLiteral("内存不足")));
    EXPECT_FALSE(QFileInfo::exists(dir.filePath(QStringLiteral("crash"))));
}

TEST(OutputFiles, TheLogStartsAfreshPastTenMegabytesKeepingOnePreviousFile)
{
    QTemporaryDir dir;
    const QByteArray full((10 << 20) + 1, 'x');
    writeTestFile(dir.filePath(QStringLiteral("output.txt.1")), "older");
    writeTestFile(dir.filePath(QStringLiteral("output.txt")), full);
    // A listed file whose bare code is missing gives one log line.
    QDir(dir.path()).mkdir(QStringLiteral("data"));
    writeTestFile(dir.filePath(QStringLiteral("data/sh600000")), "x");
    runCli({"backtest", writeScript(dir, "buy.close,0>open,0"), "--data", "data"}, dir.path());
    EXPECT_EQ(readTestFile(dir.filePath(QStringLiteral("output.txt.1"))), full);
    EXPECT_TRUE(readTestFile(dir.filePath(QStringLiteral("output.txt"))).contains("open file failed:"));
    EXPECT_LT(QFileInfo(dir.filePath(QStringLiteral("output.txt"))).size(), 1000);
}
