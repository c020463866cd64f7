#include "CliRun.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

TEST(CommandLine, CompileErrorsAndMissingDataAreReportedWithTheirExitCodes)
{
    QTemporaryDir dir;
    CliRun run =
        runCli({"backtest", writeScript(dir, "buy.close,0>open,0\nbuy.close,0>=open,0")}, dir.path());
    EXPECT_EQ(run.exitCode, 2);
    // The line first, as it always was; then why, on a line of its own.
    EXPECT_EQ(run.err.section(QLatin1Char('\n'), 0, 1),
              QStringLiteral("预编译出错: 第:2行有错误\n不支持的比较运算符：只能用 < 或 >"));

    // An empty script is one empty line; only a script that cannot be read is a usage error.
    for (const QByteArray &empty : {QByteArray(), QByteArray("\xEF\xBB\xBF")}) {
        run = runCli({"backtest", writeScript(dir, empty)}, dir.path());
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_TRUE(run.err.contains(QStringLiteral("预编译出错: 第:1行有错误"))) << run.err.toStdString();
    }
    EXPECT_EQ(runCli({"backtest", dir.filePath("missing.script")}, dir.path()).exitCode, 1);

    run = runCli({"backtest", writeScript(dir, "# nothing to buy\nconfig.trade.max.count,2")}, dir.path());
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(run.err.contains(QStringLiteral("预编译出错: 脚本缺少买点")));

    run = runCli({"backtest", writeScript(dir, "buy.close,0>open,0"), "--data", dir.filePath("none")},
                 dir.path());
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_TRUE(
        run.err.contains(QStringLiteral("警告: 文件夹%1不存在或其中缺少股票文件").arg(dir.filePath("none"))));
    EXPECT_FALSE(QFile::exists(dir.filePath("output.csv")));
}

TEST(CommandLine, ConfigurationComesFromTheWorkingDirectoryThenTheScriptThenData)
{
    QTemporaryDir dir;
    writeTestFile(dir.filePath("config.conf"), "config.source.k.dir,nowhere\r\n");
    const QString script = writeScript(dir, "buy.close,0>open,0");
    EXPECT_EQ(runCli({"backtest", script}, dir.path()).exitCode, 3);
    EXPECT_EQ(runCli({"backtest", script, "--config", dir.path()}, dir.path()).exitCode, 1);
    const CliRun run = runCli({"backtest", script, "--data", kSampleData}, dir.path());
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(run.out.startsWith(QStringLiteral("买卖次数:"))) << run.out.toStdString();
    // No buys allowed on any day: nothing to show.
    const QString none = writeScript(dir, "config.trade.max.count,0\nbuy.close,0>open,0");
    EXPECT_EQ(runCli({"backtest", none, "--data", kSampleData}, dir.path()).out, QStringLiteral("无数据\n"));
}

TEST(CommandLine, ValuesReadAsZeroAndSkippedFilesAreToldOnStderrWithResultsUnchanged)
{
    if (!QDir(kSampleData).exists())
        GTEST_SKIP() << "no sample data";
    QTemporaryDir dir;
    const QDir data(dir.filePath("data"));
    ASSERT_TRUE(data.mkpath("."));
    const QStringList sample = QDir(kSampleData).entryList(QDir::Files);
    ASSERT_GE(sample.size(), 2);
    for (const QString &file : sample.mid(0, 2))
        ASSERT_TRUE(QFile::copy(QDir(kSampleData).filePath(file), data.filePath(file)));
    ASSERT_TRUE(writeTestFile(data.filePath("600001"), "[[2020-01-02,1,1,1,1,1]]"));
    ASSERT_TRUE(writeTestFile(data.filePath("600002"), "[[2020-01-02,1,1,1,1,1]]"));

    const auto run = [&](const QByteArray &profit, const QByteArray &period) {
        const QString script =
            writeScript(dir, "config.trade.max.profit," + profit + "\nbuy.close,0>ma," + period + ",0");
        return runCli(
            {"backtest", script, "--data", data.path(), "--out", dir.filePath("o.csv"), "--jobs", "2"},
            dir.path());
    };
    const CliRun zero = run("0", "0");
    const QByteArray zeroCsv = readTestFile(dir.filePath("o.csv"));
    const CliRun notNumbers = run("1e400", "x");
    EXPECT_EQ(notNumbers.exitCode, 0);
    EXPECT_EQ(notNumbers.out, zero.out);
    EXPECT_EQ(readTestFile(dir.filePath("o.csv")), zeroCsv);
    EXPECT_TRUE(notNumbers.err.contains(QStringLiteral("s.script 第1行: “1e400”不是可用的数字，按0计算\n")))
        << notNumbers.err.toStdString();
    EXPECT_TRUE(notNumbers.err.contains(QStringLiteral("s.script 第2行: “x”不是整数，按0计算\n")));
    EXPECT_FALSE(zero.err.contains(QStringLiteral("提示")));
    // Counted over both workers.
    for (const CliRun &each : {zero, notNumbers}) {
        EXPECT_TRUE(each.err.contains(QStringLiteral("跳过2个文件 / skipped 2 files: 不超过6天")))
            << each.err.toStdString();
    }
}

// What eval prints is pinned by the in-tree golden figures; a bad term is refused.
TEST(CommandLine, EvalRefusesBadTerms)
{
    const CliRun run = runCli({"eval", kSampleData + QStringLiteral("/000044"), "close,0", "ma,5"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(run.err.contains(QStringLiteral("parse error: ma,5")));
}
