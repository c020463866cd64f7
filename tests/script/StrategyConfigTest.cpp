#include "script/StrategyConfig.h"
#include "TestSupport.h"
#include "market/TextFile.h"
#include "script/Script.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
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
    StrategyConfig builtIn;
    builtIn.kDir = QStringLiteral("elsewhere");
    builtIn.loadConfigFile(dir.filePath(QStringLiteral("config.conf")));
    EXPECT_EQ(builtIn.kDir, QStringLiteral("data"));
    EXPECT_EQ(builtIn.salePoint, SalePoint::Close); // the ticket line normalised it

    QFile file(dir.filePath(QStringLiteral("config.conf")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("#\xC9\xE8\xD6\xC3K\xCF\xDF\xCE\xC4\xBC\xFE\xC4\xBF\xC2\xBC\r\n" // GBK comment
               "config.source.k.dir,\xCA\xFD\xBE\xDD\r\nconfig.trade.max.count,7\r\n");
    file.close();
    StrategyConfig own;
    own.loadConfigFile(file.fileName());
    EXPECT_EQ(own.kDir, QStringLiteral("数据"));
    EXPECT_EQ(own.maxCount, 7);
    EXPECT_EQ(own.salePoint, SalePoint::Unset);
}

TEST(ConfigFile, OneBomIsDroppedAndBadBytesAreReplacedNeverLost)
{
    const QString chinese = QStringLiteral("买入");
    EXPECT_EQ(TextFile::decode("\xEF\xBB\xBF\xEF\xBB\xBF"
                               "buy."),
              QStringLiteral("\uFEFFbuy."));
    EXPECT_EQ(TextFile::decode("\x84\x31\x95\x33" + TextFile::encode(chinese, TextEncoding::Gbk)), chinese);
    EXPECT_EQ(TextFile::decode("a\x80"
                               "b\xFF"),
              QStringLiteral("a\uFFFDb\uFFFD"));

    // A second BOM is an unknown first character: the line does not compile.
    Script script;
    StrategyConfig scratch;
    int line = 0;
    EXPECT_EQ(compileScript(script, scratch,
                            TextFile::decode("\xEF\xBB\xBF\xEF\xBB\xBF"
                                             "buy.close,0>open,0"),
                            line),
              -1);
    EXPECT_EQ(line, 1);

    // A lead byte cut off at the end of the file is kept as a replacement.
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("config.conf"));
    ASSERT_TRUE(writeTestFile(path, "config.trade.sale.rapid,yes\nconfig.trade.sale.point,close\xA0"));
    StrategyConfig config;
    config.loadConfigFile(path);
    EXPECT_EQ(config.salePoint, SalePoint::Unset); // "close\uFFFD" is not "close"
    EXPECT_EQ(config.saleRapid, RapidSale::Yes);
}

TEST(ConfigFile, KeywordListKeepsTheReadyMadeSalePointLine)
{
    const QStringList words = configKeywordList().split(QLatin1Char('|'));
    EXPECT_EQ(words.size(), 14);
    EXPECT_EQ(words[7], QStringLiteral("config.trade.sale.point,open"));
    EXPECT_EQ(words.last(), QStringLiteral("config.source.ticket.dir"));
}

TEST(ConfigLines, ReportKeysAreReadAndNormaliseTheSaleSettingsAsAnUnknownKeyDoes)
{
    StrategyConfig withReport, withUnknown;
    for (StrategyConfig *c : {&withReport, &withUnknown}) {
        c->parseConfigLine(QStringLiteral("config.trade.sale.point,OPEN"));
        c->parseConfigLine(QStringLiteral("config.trade.sale.rapid,yes"));
    }
    EXPECT_EQ(withReport.parseConfigLine(QStringLiteral("config.report.capital,250000.5")), 1);
    EXPECT_EQ(withUnknown.parseConfigLine(QStringLiteral("config.report.nothing,1")), 0);
    for (const StrategyConfig *c : {&withReport, &withUnknown}) {
        EXPECT_EQ(c->salePoint, SalePoint::Close);
        EXPECT_EQ(c->saleRapid, RapidSale::Yes);
    }
    EXPECT_EQ(withReport.report.capital, 250000.5);
    withReport.parseConfigLine(QStringLiteral("config.report.slots,4.9"));
    withReport.parseConfigLine(QStringLiteral("config.report.commission.min,0"));
    withReport.parseConfigLine(QStringLiteral("config.report.stamp,0.1"));
    EXPECT_EQ(withReport.report.slotCount, 4);
    EXPECT_EQ(withReport.report.commissionMin, 0);
    EXPECT_EQ(withReport.report.stamp, 0.1);
    EXPECT_EQ(withReport.report.commission, 0.025);
}
