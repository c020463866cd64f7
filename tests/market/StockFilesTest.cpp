#include "TestSupport.h"
#include "market/StockFileList.h"
#include "market/StockLoader.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace {

const char kSevenDays[] = "[[d1,1,1,1,1,1],[d2,1,1,1,1,1],[d3,1,1,1,1,1],[d4,1,1,1,1,1],"
                          "[d5,1,1,1,1,1],[d6,1,1,1,1,1],[d7,1,1,1,1,1]]";

} // namespace

TEST(DataDirectory, ListsRegularVisibleFilesByNameIgnoringCase)
{
    QTemporaryDir dir;
    for (const char *name : {"600001", "SH600002", "sh600000", ".600003"})
        ASSERT_TRUE(writeTestFile(dir.filePath(QString::fromLatin1(name)), "x"));
    QDir(dir.path()).mkdir("600004");
    QFile::link(dir.filePath("600001"), dir.filePath("600005"));

    QStringList names;
    for (const QString &path : listStockFiles(dir.path()))
        names << QFileInfo(path).fileName();
    EXPECT_EQ(names, (QStringList{"600001", "sh600000", "SH600002"}));
    EXPECT_TRUE(listStockFiles(dir.filePath("missing")).isEmpty());
}

TEST(DataDirectory, APrefixedNameIsReadThroughItsBareCode)
{
    QTemporaryDir dir;
    ASSERT_TRUE(writeTestFile(dir.filePath("sh688006"), "garbage, not read"));
    ASSERT_TRUE(writeTestFile(dir.filePath("688006"), kSevenDays));
    StockLoader loader;
    StockSeries series;
    QString format = QStringLiteral("default");
    EXPECT_TRUE(loader.loadStockSeries(dir.filePath("sh688006"), dir.path(), format, series));
    EXPECT_EQ(series.code, QStringLiteral("688006"));
    EXPECT_EQ(series.size(), 7);
}

TEST(DataDirectory, SixDaysAreTooFewAndOtherFormatsReadNothing)
{
    QTemporaryDir dir;
    ASSERT_TRUE(writeTestFile(dir.filePath("600000"), QByteArray(kSevenDays).replace(",[d7,1,1,1,1,1]", "")));
    ASSERT_TRUE(writeTestFile(dir.filePath("600001"), kSevenDays));
    StockLoader loader;
    StockSeries series;
    QString format = QStringLiteral("default");
    EXPECT_FALSE(loader.loadStockSeries(dir.filePath("600000"), dir.path(), format, series));
    EXPECT_EQ(series.size(), 6);
    EXPECT_TRUE(loader.loadStockSeries(dir.filePath("600001"), dir.path(), format, series));
    format = QStringLiteral("weekly");
    EXPECT_FALSE(loader.loadStockSeries(dir.filePath("600001"), dir.path(), format, series));
    EXPECT_EQ(series.size(), 0);
}

TEST(DataDirectory, AFifoDeviceLinkOrHugeFileWhereAStockShouldBeIsSkippedWithoutWaiting)
{
    QTemporaryDir dir;
    QDir(dir.path()).mkdir("elsewhere");
    const QString real = dir.filePath("elsewhere/600003");
    ASSERT_TRUE(writeTestFile(real, kSevenDays));
    QFile::link(real, dir.filePath("600003"));
    for (const QString &node : makeSpecialNodes(dir.path()))
        QFile::rename(node, dir.filePath(node.endsWith(QLatin1String("fifo")) ? "600001" : "600002"));
    QFile huge(dir.filePath("600004"));
    ASSERT_TRUE(huge.open(QIODevice::WriteOnly) && huge.resize((qint64(1) << 28) + 1));
    huge.close();

    StockLoader loader;
    StockSeries series;
    const QString format = QStringLiteral("default");
    // Each is listed under another name and re-opened by its code, as runs do.
    const std::pair<const char *, StockSkip> cases[] = {{"x600001", StockSkip::NotRegularFile},
                                                        {"x600002", StockSkip::NotRegularFile},
                                                        {"x600003", StockSkip::NotRegularFile},
                                                        {"x600004", StockSkip::TooLarge}};
    for (const auto &[listed, skip] : cases) {
        const QString code = QString::fromLatin1(listed).mid(1);
        if (!QFileInfo::exists(dir.filePath(code)) && !QFileInfo(dir.filePath(code)).isSymLink())
            continue; // no device without root
        LogCapture log;
        EXPECT_FALSE(
            loader.loadStockSeries(dir.filePath(QString::fromLatin1(listed)), dir.path(), format, series));
        EXPECT_EQ(loader.lastSkip(), skip) << listed;
        ASSERT_EQ(log.lines().size(), 1);
        EXPECT_TRUE(log.lines()[0].startsWith(QStringLiteral("open file failed:")));
    }
    // The link's target itself is fine.
    EXPECT_TRUE(loader.loadStockSeries(real, dir.filePath("elsewhere"), format, series));
}
