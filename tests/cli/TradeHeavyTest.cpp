#include "CliRun.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <QCryptographicHash>
#include <QDir>
#include <QTemporaryDir>

// A short-term strategy that trades on about every eighth bar of the real
// stocks beside the project: what it writes was recorded before the trade
// records and the writer were made compact, and must never change.
TEST(TradeHeavy, OutputAndSummaryAreWhatTheyWereForAnyNumberOfThreads)
{
    const QString data = sharedDir() + QStringLiteral("/data/a-share-daily");
    if (!QDir(data).exists())
        GTEST_SKIP() << "no market data at " << data.toStdString();
    const QString script = QStringLiteral(ORVEL_SOURCE_DIR "/bench/trade-heavy.script");
    QTemporaryDir dir;
    for (const char *jobs : {"1", "2", "5"}) {
        const QString out = dir.filePath(QStringLiteral("output%1.csv").arg(jobs));
        const CliRun run = runCli({"backtest", script, "--data", data, "--out", out, "--jobs", jobs}, dir.path());
        ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
        EXPECT_EQ(run.out, QStringLiteral("买卖次数:147303\n平均持股天数:3.09\n策略成功率:48.07\n平均收益:0.33\n"));
        EXPECT_EQ(QCryptographicHash::hash(readTestFile(out), QCryptographicHash::Sha256).toHex(),
                  "24a874cdfddf900a7dcabec9dd35988611b9b48965f1ce59b41c73ac235d0e65")
            << "jobs " << jobs;
    }
}
