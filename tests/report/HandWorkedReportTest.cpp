#include "ReportBook.h"
#include "report/ReportJson.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace {

// Seven days; B is suspended on the 5th and 8th and gone on the 10th.
// 30,000 yuan in two slots: each buy may spend at most half the equity, so
// the costs stay under the 5 yuan minimum commission.
struct HandWorkedBook : testing::Test {
    HandWorkedBook()
        : m({"2024-01-02", "2024-01-03", "2024-01-04", "2024-01-05", "2024-01-08", "2024-01-09",
             "2024-01-10"})
    {
        const double none = NAN;
        m.add("600000", {10, 10.5, 11, 10, 10.8, 11.2, 11.0});
        m.add("000001", {20, 20, 19, none, none, 21, none});
        m.add("000002", {5, 5, 5, 5, 5, 5, 5});
        m.add("300750", {600, 600, 610, 620, 620, 590, 580});
        settings.capital = 30000;
        settings.slotCount = 2;
        trades = {
            closedTrade("600000", "2024-01-02", 10, "2024-01-04", 11, 3, TradeExit::TakeProfit),
            closedTrade("000001", "2024-01-02", 20, "2024-01-09", 21, 4, TradeExit::SalePoint),
            // Both slots are taken: skipped, and its sale ignored.
            closedTrade("000002", "2024-01-03", 5, "2024-01-04", 4.5, 2, TradeExit::StopLoss),
            // 100 shares cost more than half the equity: skipped.
            closedTrade("300750", "2024-01-04", 600, "2024-01-08", 620, 3, TradeExit::HoldExpired),
            // Bought and sold the same day; the summary leaves intraday take-profits out.
            closedTrade("600000", "2024-01-05", 10, "2024-01-05", 10.3, 1, TradeExit::TakeProfit, false),
            {"000002", "2024-01-10下一日开盘买入", 0, "", 0, 1, TradeExit::PendingBuy, false, false},
        };
        report = computeReport(trades, m.market, settings);
    }

    TestMarket m;
    ReportSettings settings;
    std::vector<ReportTrade> trades;
    StrategyReport report;
};

} // namespace

TEST_F(HandWorkedBook, TheAccountBuysInLotsPaysItsCostsAndMarksSuspendedStocksAtTheirLastClose)
{
    // 2nd: 1400 × 10 (1500 shares would not leave room for the costs) and
    // 700 × 20, each 14,000 + 5 (minimum) + 0.14 transfer.
    // 4th: 600000 sold for 15,400 − 5 − 0.154 − 7.7 stamp.
    // 5th: 1500 × 10 bought for 15,005.15, sold at 10.3 for 15,450 − 12.8795.
    // 9th: 000001 sold for 14,700 − 12.497; 19 is its close on the 5th and 8th.
    const double equity[] = {29989.72, 30689.72, 30676.866, 31108.8365, 31108.8365, 32496.3395, 32496.3395};
    const double cash[] = {1989.72, 1989.72, 17376.866, 17808.8365, 17808.8365, 32496.3395, 32496.3395};
    const int positions[] = {2, 2, 1, 1, 1, 0, 0};
    ASSERT_EQ(report.daily.size(), 7u);
    for (size_t day = 0; day < 7; ++day) {
        EXPECT_NEAR(report.daily[day].equity, equity[day], 1e-9) << day;
        EXPECT_NEAR(report.daily[day].cash, cash[day], 1e-9) << day;
        EXPECT_EQ(report.daily[day].positions, positions[day]) << day;
    }
    const AccountFigures &a = report.account;
    EXPECT_NEAR(a.costs, 5.14 + 5.14 + 12.854 + 5.15 + 12.8795 + 12.497, 1e-9);
    EXPECT_EQ(a.skippedBuys, 2);
    EXPECT_NEAR(a.finalEquity, 32496.3395, 1e-9);
    EXPECT_NEAR(*a.totalReturn, 8.32113166666668, 1e-9);
    EXPECT_NEAR(*a.annualReturn, 3744.802326319362, 1e-6); // 8 days between the first and last date
    // Exposed every day but the last: the 9th sells a position it held.
    EXPECT_NEAR(*a.exposure, 600.0 / 7, 1e-9);
}

TEST_F(HandWorkedBook, DrawdownRiskAndTheMarketFollowTheDailyCurves)
{
    const AccountFigures &a = report.account;
    EXPECT_NEAR(*a.maxDrawdown, 0.041883731751216235, 1e-12);
    EXPECT_EQ(a.maxDrawdownPeak, QStringLiteral("2024-01-03"));
    EXPECT_EQ(a.maxDrawdownTrough, QStringLiteral("2024-01-04"));
    EXPECT_EQ(a.maxDrawdownRecovery, QStringLiteral("2024-01-05"));
    EXPECT_EQ(a.longestUnderwaterDays, 1);
    EXPECT_NEAR(report.daily[2].drawdown, 0.041883731751216235, 1e-12);
    EXPECT_NEAR(*a.volatility, 28.082340265691958, 1e-9);
    EXPECT_NEAR(*a.sharpe, 11.76902547261043, 1e-9);
    EXPECT_NEAR(*a.sortino, 1239.94070987751, 1e-6);
    EXPECT_NEAR(*a.calmar, 89409.47164314266, 1e-3);

    // The 9th leaves 000001 out: its bar before is the 4th, not the 8th.
    // Closes are single precision, as the data files are read (10.8 is 10.8000002).
    const double levels[] = {1.0,
                             1.0125,
                             1.0161160714285713,
                             0.9908772221630827,
                             1.0173006210539262,
                             1.0134518012481353,
                             1.0016936393092593};
    for (size_t day = 0; day < 7; ++day)
        EXPECT_NEAR(report.daily[day].market, 30000 * levels[day], 1e-6) << day;
    EXPECT_NEAR(*report.market.totalReturn, 0.1693639309259254, 1e-9);
    EXPECT_NEAR(*report.market.annualReturn, 8.03227218609921, 1e-9);
    EXPECT_NEAR(*report.market.maxDrawdown, 2.483854942871334, 1e-9);
    EXPECT_NEAR(*report.market.excessReturn, 8.151767735740755, 1e-9);

    ASSERT_EQ(report.monthly.size(), 1u);
    EXPECT_EQ(report.monthly[0].month, QStringLiteral("2024-01"));
    EXPECT_NEAR(*report.monthly[0].accountReturn, 8.32113166666668, 1e-9);
    EXPECT_NEAR(*report.monthly[0].marketReturn, 0.1693639309259254, 1e-9);
}

TEST_F(HandWorkedBook, TradeFiguresCountClosedTradesInBookOrder)
{
    // Returns in book order: 10, 5, −10, 3.33, 3; the pending buy is no trade.
    const TradeFigures &t = report.trades;
    EXPECT_EQ(t.count, 5);
    EXPECT_EQ(t.summaryCount, 4);
    EXPECT_EQ(t.wins, 4);
    EXPECT_EQ(t.losses, 1);
    EXPECT_DOUBLE_EQ(*t.winRate, 80);
    EXPECT_NEAR(*t.averageReturn, 2.2666666666666684, 1e-12);
    EXPECT_NEAR(*t.medianReturn, 10.0 / 3, 1e-12);
    EXPECT_NEAR(*t.averageWin, 5.333333333333335, 1e-12);
    EXPECT_DOUBLE_EQ(*t.averageLoss, -10);
    EXPECT_NEAR(*t.payoffRatio, 0.5333333333333335, 1e-12);
    EXPECT_NEAR(*t.profitFactor, 2.1333333333333335, 1e-12);
    EXPECT_DOUBLE_EQ(*t.best, 10);
    EXPECT_DOUBLE_EQ(*t.worst, -10);
    EXPECT_EQ(t.maxWinStreak, 2);
    EXPECT_EQ(t.maxLossStreak, 1);
    EXPECT_DOUBLE_EQ(*t.averageHoldDays, 2.6);
    EXPECT_DOUBLE_EQ(*t.medianHoldDays, 3);

    ASSERT_EQ(report.byExit.size(), 4u);
    const int counts[] = {1, 2, 1, 1};
    const double averages[] = {5, 6.5, -10, 10.0 / 3};
    const double winRates[] = {100, 100, 0, 100};
    for (size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(report.byExit[i].count, counts[i]) << i;
        EXPECT_NEAR(*report.byExit[i].averageReturn, averages[i], 1e-12) << i;
        EXPECT_DOUBLE_EQ(*report.byExit[i].winRate, winRates[i]) << i;
    }

    ASSERT_EQ(report.byYear.size(), 1u);
    EXPECT_EQ(report.byYear[0].year, QStringLiteral("2024"));
    EXPECT_EQ(report.byYear[0].count, 5);
    EXPECT_NEAR(*report.byYear[0].accountReturn, 8.32113166666668, 1e-9);

    std::vector<std::pair<long long, int>> bins;
    for (const HistogramBin &bin : report.histogram)
        bins.emplace_back(bin.from, bin.count);
    EXPECT_EQ(bins, (std::vector<std::pair<long long, int>>{{-10, 1}, {3, 2}, {5, 1}, {10, 1}}));
}

TEST_F(HandWorkedBook, ReportFilesCarryTheFigures)
{
    const QJsonObject json = QJsonDocument::fromJson(reportJson(report)).object();
    EXPECT_DOUBLE_EQ(json["account"]["skippedBuys"].toDouble(), 2);
    EXPECT_EQ(json["account"]["maxDrawdownRecovery"].toString(), QStringLiteral("2024-01-05"));
    EXPECT_EQ(json["byExit"]["止盈"]["count"].toInt(), 2);
    EXPECT_EQ(json["daily"].toArray().size(), 7);
    EXPECT_EQ(json["byYear"][0]["year"].toInt(), 2024);
    const QList<QByteArray> lines = equityCsv(report).split('\n');
    EXPECT_EQ(lines[0], "date,equity,cash,positions,drawdown,market");
    EXPECT_EQ(lines[3], "2024-01-04,30676.87,17376.87,1,0.0419,30483.48");
}
