#include "script/StrategyConfig.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

TEST(ConfigLines, KnownKeysStoreTheirValueAndIntegersTruncate)
{
    StrategyConfig c;
    EXPECT_EQ(c.parseConfigLine(QStringLiteral("config.trade.max.hold.day,4.7")), 1);
    EXPECT_EQ(c.maxHoldDay, 4);
    EXPECT_EQ(c.parseConfigLine(QStringLiteral("config.trade.max.count,abc")), 1);
    EXPECT_EQ(c.maxCount, 0);
    EXPECT_EQ(c.parseConfigLine(QStringLiteral("config.trade.min.exclude,-2.5")), 1);
    EXPECT_EQ(c.minExclude, -2);
    EXPECT_EQ(c.parseConfigLine(QStringLiteral("config.trade.max.lost, -9.5 ")), 1);
    EXPECT_EQ(c.maxLost, -9.5f);
    EXPECT_EQ(c.parseConfigLine(QStringLiteral("config.source.k.dir, d ")), 1);
    EXPECT_EQ(c.kDir, QStringLiteral(" d ")); // strings are stored as written
    EXPECT_EQ(c.parseConfigLine(QStringLiteral("config.trade.buy.order,")), 1);
    EXPECT_EQ(c.buyOrder, BuyOrder::Ascending); // only "desc" is descending
}

TEST(ConfigLines, OnlyTwoFieldLinesAreConfiguration)
{
    StrategyConfig c;
    EXPECT_EQ(c.parseConfigLine(QStringLiteral("config.source.k.dir,d:,data")), -1);
    EXPECT_EQ(c.parseConfigLine(QStringLiteral("config.source.k.dir")), -1);
    EXPECT_EQ(c.kDir, QStringLiteral("data"));
    EXPECT_EQ(c.parseConfigLine(QStringLiteral("Config.source.k.dir,x")), 0); // keys are case-sensitive
}

TEST(ConfigLines, SaleSettingsAreNormalisedOnlyByAnUnknownKey)
{
    StrategyConfig c;
    c.parseConfigLine(QStringLiteral("config.trade.sale.point,OPEN"));
    c.parseConfigLine(QStringLiteral("config.trade.sale.rapid,YES"));
    c.parseConfigLine(QStringLiteral("config.trade.max.count,2"));
    EXPECT_EQ(c.salePoint, SalePoint::Unset); // names are exact
    EXPECT_EQ(c.saleRapid, RapidSale::No);
    EXPECT_EQ(c.parseConfigLine(QStringLiteral("config.source.ticket.dir,tick")), 0);
    EXPECT_EQ(c.salePoint, SalePoint::Close);

    StrategyConfig kept;
    kept.parseConfigLine(QStringLiteral("config.trade.sale.point,open"));
    kept.parseConfigLine(QStringLiteral("config.trade.sale.rapid,yes"));
    kept.parseConfigLine(QStringLiteral("# a comment, with one comma"));
    EXPECT_EQ(kept.salePoint, SalePoint::Open);
    EXPECT_EQ(kept.saleRapid, RapidSale::Yes);
}

TEST(ConfigFile, FallsBackToTheBuiltInCopyAndReadsCrLfGbkFiles)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("config.conf"));
    StrategyConfig builtIn;
    builtIn.kDir = QStringLiteral("elsewhere");
    builtIn.loadConfigFile(path);
    EXPECT_EQ(builtIn.kDir, QStringLiteral("data"));
    EXPECT_EQ(builtIn.salePoint, SalePoint::Close); // the ticket line normalised it

    ASSERT_TRUE(writeTestFile(path,
                              "#\xC9\xE8\xD6\xC3K\xCF\xDF\xCE\xC4\xBC\xFE\xC4\xBF\xC2\xBC\r\n" // GBK comment
                              "config.source.k.dir,\xCA\xFD\xBE\xDD\r\nconfig.trade.max.count,7\r\n"));
    StrategyConfig own;
    own.loadConfigFile(path);
    EXPECT_EQ(own.kDir, QStringLiteral("数据"));
    EXPECT_EQ(own.maxCount, 7);
    EXPECT_EQ(own.salePoint, SalePoint::Unset);
}

// A lead byte cut off at the end of the file is kept as a replacement.
TEST(ConfigFile, ALeadByteCutOffAtTheEndSpoilsItsValue)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("config.conf"));
    ASSERT_TRUE(writeTestFile(path, "config.trade.sale.rapid,yes\nconfig.trade.sale.point,close\xA0"));
    StrategyConfig config;
    config.loadConfigFile(path);
    EXPECT_EQ(config.salePoint, SalePoint::Unset); // "close\uFFFD" is not "close"
    EXPECT_EQ(config.saleRapid, RapidSale::Yes);
}

// The keys added to the record must not change what the shipped files'
// unknown-key line decides: each normalises the sale settings as it does.
TEST(ConfigLines, AddedKeysStoreTheirValueAndNormaliseTheSaleSettingsAsAnUnknownKeyDoes)
{
    const std::pair<const char *, int> lines[] = {
        {"config.source.k.stocks,all", 0},     {"config.trade.t1,yes", 1},
        {"config.trade.limit,adjusted", 1},    {"config.report.capital,250000.5", 1},
        {"config.report.slots,4.9", 1},        {"config.report.stamp,0.1", 1},
        {"config.report.commission.min,0", 1}, {"config.report.nothing,1", 0}};
    StrategyConfig all;
    for (const auto &[line, result] : lines) {
        StrategyConfig c;
        c.parseConfigLine(QStringLiteral("config.trade.sale.point,OPEN"));
        c.parseConfigLine(QStringLiteral("config.trade.sale.rapid,yes"));
        EXPECT_EQ(c.parseConfigLine(QString::fromUtf8(line)), result) << line;
        EXPECT_EQ(c.salePoint, SalePoint::Close) << line;
        EXPECT_EQ(c.saleRapid, RapidSale::Yes) << line;
        all.parseConfigLine(QString::fromUtf8(line));
    }
    EXPECT_EQ(all.kStocks, QStringLiteral("all"));
    EXPECT_TRUE(all.rules.t1);
    EXPECT_EQ(all.rules.limit, TradeRules::Limit::Adjusted);
    EXPECT_EQ(all.report.capital, 250000.5);
    EXPECT_EQ(all.report.slotCount, 4);
    EXPECT_EQ(all.report.stamp, 0.1);
    EXPECT_EQ(all.report.commissionMin, 0);
    all.parseConfigLine(QStringLiteral("config.trade.limit,no"));
    EXPECT_EQ(all.rules.limit, TradeRules::Limit::Off);
}
