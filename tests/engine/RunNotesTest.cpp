#include "engine/RunNotes.h"
#include "TestSupport.h"
#include "engine/BacktestRun.h"
#include "engine/RunSummary.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

namespace {

// What a run over `dir` tells the user: the reason for no trades, or the settings line.
struct Told {
    QString noData;
    QString settings;
};

Told runOver(const QString &dir, const QString &config, const QString &script)
{
    BacktestRun run(config, script, dir);
    EXPECT_EQ(run.problem(), BacktestRun::Problem::None);
    run.setJobs(2);
    const TradeBook book = run.run();
    return {RunSummary::fromBook(book).rows == 0 ? RunNotes::noDataReason(run.config(), run.counts())
                                                 : QString(),
            RunNotes::effectiveSettings(run.config(), run.counts())};
}

} // namespace

TEST(NoData, SaysWhetherNoStockWasReadNoSignalCameOrTheGapRefusedEveryOne)
{
    QTemporaryDir dir;
    ASSERT_TRUE(writeTestFile(dir.filePath(QStringLiteral("600001")), flatDays().left(60)));
    const QString signal = QStringLiteral("buy.vol,0>value,100");
    EXPECT_EQ(runOver(dir.path(), {}, signal).noData, QStringLiteral("没有读到任何股票：1个不超过6天"));

    ASSERT_TRUE(writeTestFile(dir.filePath(QStringLiteral("600002")), flatDays()));
    ASSERT_TRUE(writeTestFile(dir.filePath(QStringLiteral("600003")), flatDays()));
    EXPECT_EQ(runOver(dir.path(), {}, QStringLiteral("buy.vol,0>value,1000")).noData,
              QStringLiteral("2只股票里，买点条件在任何一天都不成立"));
    // The next open is flat, and this range allows only falls of 1 % or more.
    EXPECT_EQ(runOver(dir.path(), QStringLiteral("config.trade.max.allow.increase,-1"), signal).noData,
              QStringLiteral("2次买点信号都因次日开盘涨跌幅超出允许范围（-3.6%～-1%）而没有买入"));
    EXPECT_TRUE(runOver(dir.path(), QStringLiteral("config.trade.max.hold.day,1"), signal).noData.isEmpty());
}

TEST(EffectiveSettings, ShowTheSalePointThatAnUnknownKeyDecides)
{
    QTemporaryDir dir;
    ASSERT_TRUE(writeTestFile(dir.filePath(QStringLiteral("600002")), flatDays()));
    ASSERT_TRUE(writeTestFile(dir.filePath(QStringLiteral("600003")), flatDays().left(60)));
    const QString script = QStringLiteral("buy.vol,0>value,100");
    const QString shipped = QStringLiteral("config.source.k.dir,data\nconfig.source.ticket.dir,tick\n");
    const QString withTicket = runOver(dir.path(), shipped, script).settings;
    EXPECT_EQ(withTicket, QStringLiteral("本次运行: 数据 %1（读取1只股票） | 卖出时机 收盘 | 立即止盈 否 | "
                                         "最长持股 36天 | 止盈 72% | 止损 -10% | 每日最多买入 3")
                              .arg(QDir::toNativeSeparators(dir.path())));
    const QString without =
        runOver(dir.path(), QStringLiteral("config.source.k.dir,data\n"), script).settings;
    EXPECT_TRUE(without.contains(QStringLiteral("卖出时机 次日开盘"))) << without.toStdString();
}
