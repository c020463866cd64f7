#include "ReportBook.h"
#include "engine/TradeBook.h"
#include "report/ReportFiles.h"
#include "report/ReportJson.h"
#include "report/ReportParts.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

QStringList keysOf(const QJsonValue &value)
{
    QStringList keys = value.toObject().keys();
    keys.sort();
    return keys;
}

// The space-separated words of `keys`, sorted as keysOf gives them.
QStringList sorted(const char *keys)
{
    QStringList list = QString::fromUtf8(keys).split(QLatin1Char(' '));
    list.sort();
    return list;
}

} // namespace

TEST(Drawdown, IsAPercentOfTheRunningPeakWithARecoveryOnlyWhenTheCurveGetsBack)
{
    const Drawdown recovered = drawdownOf({100, 70, 90, 100, 80});
    EXPECT_DOUBLE_EQ(*recovered.maximum, 30);
    EXPECT_EQ(recovered.peak, 0);
    EXPECT_EQ(recovered.trough, 1);
    EXPECT_EQ(recovered.recovery, 3);
    EXPECT_EQ(recovered.longestUnderwater, 2);

    const Drawdown open = drawdownOf({100, 120, 90, 100, 110, 95});
    EXPECT_DOUBLE_EQ(*open.maximum, 25);
    EXPECT_EQ(open.peak, 1);
    EXPECT_EQ(open.trough, 2);
    EXPECT_EQ(open.recovery, -1);
    EXPECT_EQ(open.longestUnderwater, 4);
}

TEST(Report, AnEmptyBookKeepsTheCapitalAndStillShowsTheMarket)
{
    TestMarket m({"2024-01-02", "2024-01-03", "2025-01-02"});
    m.add("600000", {10, 11, 12.1});
    const StrategyReport report = computeReport(reportTradesOf(TradeBook()), m.market, ReportSettings());
    EXPECT_EQ(report.trades.count, 0);
    EXPECT_FALSE(report.trades.winRate || report.trades.best || report.trades.medianHoldDays);
    EXPECT_DOUBLE_EQ(report.account.finalEquity, 1000000);
    EXPECT_DOUBLE_EQ(*report.account.totalReturn, 0);
    EXPECT_DOUBLE_EQ(*report.account.maxDrawdown, 0);
    EXPECT_TRUE(report.account.maxDrawdownPeak.isEmpty());
    EXPECT_FALSE(report.account.sharpe || report.account.sortino || report.account.calmar);
    EXPECT_DOUBLE_EQ(*report.account.exposure, 0);
    EXPECT_NEAR(*report.market.totalReturn, 21, 1e-4);
    ASSERT_EQ(report.byYear.size(), 2u);
    EXPECT_NEAR(*report.byYear[0].marketReturn, 10, 1e-4);
    EXPECT_NEAR(*report.byYear[1].marketReturn, 10, 1e-4);
    EXPECT_EQ(report.byYear[1].count, 0);
}

TEST(Report, JsonHasEveryKeyAndNullWhereAFigureHasNoValue)
{
    // One day: no span to annualise, no daily return, no volatility.
    TestMarket m({"2024-01-02"});
    m.add("600000", {10});
    TradeBook book;
    TradeRow pending;
    pending.code = QStringLiteral("600000");
    pending.buyDate = TradeDate::idOfText(QStringLiteral("2024-01-02下一日开盘买入"));
    pending.status = TradeStatus::PendingBuy;
    book.file(pending);
    const std::vector<ReportTrade> trades = reportTradesOf(book);
    ASSERT_EQ(trades.size(), 1u);
    EXPECT_EQ(trades[0].exit, TradeExit::PendingBuy);

    const QByteArray text = reportJson(computeReport(trades, m.market, ReportSettings()));
    EXPECT_FALSE(text.contains("inf") || text.contains("nan")) << text.constData();
    const QJsonObject json = QJsonDocument::fromJson(text).object();
    EXPECT_EQ(keysOf(json), sorted("trades byExit byYear histogram account market monthly daily"));
    EXPECT_EQ(
        keysOf(json["trades"]),
        sorted(
            "count summaryCount wins losses winRate averageReturn medianReturn averageWin averageLoss "
            "payoffRatio profitFactor best worst maxWinStreak maxLossStreak averageHoldDays medianHoldDays"));
    EXPECT_EQ(keysOf(json["account"]),
              sorted("capital finalEquity totalReturn annualReturn maxDrawdown maxDrawdownPeak "
                     "maxDrawdownTrough maxDrawdownRecovery longestUnderwaterDays volatility sharpe sortino "
                     "calmar exposure costs skippedBuys"));
    EXPECT_EQ(keysOf(json["market"]), sorted("totalReturn annualReturn maxDrawdown excessReturn"));
    EXPECT_EQ(keysOf(json["byExit"]), sorted("卖点 止盈 止损 持股时间到期"));
    EXPECT_EQ(keysOf(json["byExit"]["止损"]), sorted("count winRate averageReturn"));
    EXPECT_EQ(keysOf(json["byYear"][0]),
              sorted("year count winRate averageReturn accountReturn marketReturn"));
    EXPECT_EQ(keysOf(json["monthly"][0]), sorted("month accountReturn marketReturn"));
    EXPECT_EQ(keysOf(json["daily"][0]), sorted("date equity cash positions drawdown market"));
    EXPECT_TRUE(json["histogram"].toArray().isEmpty());

    for (const char *key :
         {"winRate", "averageReturn", "profitFactor", "payoffRatio", "best", "averageHoldDays"})
        EXPECT_TRUE(json["trades"][key].isNull()) << key;
    for (const char *key : {"annualReturn", "volatility", "sharpe", "sortino", "calmar", "maxDrawdownPeak",
                            "maxDrawdownRecovery"})
        EXPECT_TRUE(json["account"][key].isNull()) << key;
    EXPECT_TRUE(json["market"]["annualReturn"].isNull());
    EXPECT_TRUE(json["byExit"]["卖点"]["winRate"].isNull());
    EXPECT_EQ(json["trades"]["summaryCount"].toInt(), 0);
    EXPECT_DOUBLE_EQ(json["account"]["totalReturn"].toDouble(), 0);
}

TEST(ReportFiles, ThePageSaysWhenThereWereNoTradesAndAFolderInTheWayIsAnError)
{
    TestMarket m({"2024-01-02", "2024-01-03"});
    m.add("600000", {10, 9});
    const StrategyReport report = computeReport({}, m.market, ReportSettings());
    const QString page = reportHtml(report, {});
    EXPECT_TRUE(page.contains(QStringLiteral("本次回测没有已完成的交易")));
    EXPECT_TRUE(page.contains(QStringLiteral("color:#15803d\">-10.00%"))); // the market's loss, in green
    EXPECT_FALSE(page.contains(QStringLiteral("<img")));

    QTemporaryDir dir;
    const QString out = dir.filePath(QStringLiteral("new/report"));
    EXPECT_EQ(writeReportFiles(out, report, {}), QString());
    for (const char *name : {"report.json", "equity.csv", "report.html"})
        EXPECT_TRUE(QFileInfo(QDir(out).filePath(QString::fromLatin1(name))).isFile()) << name;
    ASSERT_TRUE(QDir(out).remove(QStringLiteral("equity.csv")));
    ASSERT_TRUE(QDir(out).mkdir(QStringLiteral("equity.csv")));
    EXPECT_TRUE(writeReportFiles(out, report, {}).contains(QStringLiteral("equity.csv")));
}

TEST(Report, DatesOfAnotherFormGiveTheSameMarketAndAccount)
{
    const std::vector<ReportTrade> usualTrades = {
        closedTrade("600000", "2024-01-03", 10, "2024-01-05", 12, 3, TradeExit::SalePoint)};
    std::vector<ReportTrade> otherTrades = usualTrades;
    otherTrades[0].buyDate = QStringLiteral("2024/01/03");
    otherTrades[0].saleDate = QStringLiteral("2024/01/05");
    const double none = NAN;
    TestMarket usual({"2024-01-02", "2024-01-03", "2024-01-04", "2024-01-05"});
    TestMarket other({"2024/01/02", "2024/01/03", "2024/01/04", "2024/01/05"});
    for (TestMarket *m : {&usual, &other}) {
        m->add("000001", {8, none, 10, 12});
        m->add("600000", {10, 11, none, 12});
        m->add("000002", {none, 4, 5, 6});
    }
    const StrategyReport a = computeReport(usualTrades, usual.market, ReportSettings());
    const StrategyReport b = computeReport(otherTrades, other.market, ReportSettings());
    ASSERT_EQ(a.daily.size(), 4u);
    ASSERT_EQ(b.daily.size(), 4u);
    // 3rd: only 600000 has the 2nd too; 4th: only 000002; 5th: 000001 and 000002.
    const double levels[] = {1, 1.1, 1.375, 1.65};
    for (size_t day = 0; day < 4; ++day) {
        EXPECT_NEAR(a.daily[day].market, 1e6 * levels[day], 1e-3) << day;
        EXPECT_EQ(a.daily[day].market, b.daily[day].market) << day;
        EXPECT_EQ(a.daily[day].equity, b.daily[day].equity) << day;
    }
    EXPECT_EQ(a.daily[1].positions, 1);
    EXPECT_EQ(*a.account.totalReturn, *b.account.totalReturn);
}
