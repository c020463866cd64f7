#include "DayFileSupport.h"
#include "TestSupport.h"
#include "market/CsvReader.h"
#include "market/KLineSource.h"
#include "market/StockLoader.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QStringEncoder>
#include <QTemporaryDir>

namespace {

void expectSameDays(const StockSeries &actual, const StockSeries &expected)
{
    ASSERT_EQ(actual.size(), expected.size());
    for (size_t i = 0; i < expected.bars.size(); ++i) {
        const Stock &a = actual.bars[i], &e = expected.bars[i];
        EXPECT_EQ(a.date, e.date) << i;
        // Bitwise: the same float, not a near one.
        for (auto field : {&Stock::open, &Stock::high, &Stock::low, &Stock::close, &Stock::volume,
                           &Stock::change, &Stock::increase})
            EXPECT_EQ(std::memcmp(&(a.*field), &(e.*field), sizeof(float)), 0) << i;
    }
}

StockSeries fromText(const QByteArray &text)
{
    StockSeries series;
    parseKLineText(std::string_view(text.constData(), size_t(text.size())), series);
    return series;
}

QString makePath(const QTemporaryDir &dir, const QString &relative, const QByteArray &bytes)
{
    const QString path = dir.filePath(relative);
    QDir().mkpath(QFileInfo(path).path());
    return writeTestFile(path, bytes) ? path : QString();
}

std::vector<DayRecord> sevenDays(int32_t price = 1055)
{
    std::vector<DayRecord> days;
    for (uint32_t d = 4; d < 11; ++d)
        days.push_back({20210100 + d, price, price + 11, price - 9, price + 1, 16681114});
    return days;
}

} // namespace

TEST(DayFiles, PricesAndDatesAreWhatTheSameDecimalsAsTextGive)
{
    std::vector<DayRecord> days = randomDays(200, 7);
    days.push_back({20240229, 1055, 99999999, 1, 1 << 30, 4294967295u}); // extremes, a leap day
    QTemporaryDir dir;
    StockLoader loader;
    StockSeries series;
    const QString stock = makePath(dir, QStringLiteral("sh600000.day"), dayFileBytes(days));
    ASSERT_TRUE(loader.readFile(stock, KLineFormat::Tdx, series));
    expectSameDays(series, fromText(klineTextOf(days)));

    // Funds and ETFs count in 0.001 元.
    const QString fund = makePath(dir, QStringLiteral("sh/lday/sh510300.day"), dayFileBytes(days));
    ASSERT_TRUE(loader.readFile(fund, KLineFormat::Tdx, series));
    expectSameDays(series, fromText(klineTextOf(days, 3)));
}

TEST(DayFiles, DamageSkipsDaysOrTheFileWithOneLogLine)
{
    QTemporaryDir dir;
    std::vector<DayRecord> days = sevenDays();
    days.insert(days.begin() + 2, {0, 1000, 1000, 1000, 1000, 1});        // no date
    days.insert(days.begin() + 3, {20230230, 1000, 1000, 1000, 1000, 1}); // 30 February
    days.insert(days.begin() + 4, {20230301, 1000, 1000, 0, 1000, 1});    // a price of 0
    days.insert(days.begin() + 5, {20230302, -5, 1000, 1000, 1000, 1});   // below 0
    const QByteArray bytes = dayFileBytes(days);
    StockLoader loader;
    StockSeries series;
    KLineSource source{dir.path(), QStringLiteral("tdx")};
    {
        LogCapture log;
        EXPECT_TRUE(loader.load(makePath(dir, QStringLiteral("sz000001.day"), bytes), source, series));
        EXPECT_EQ(series.size(), 7);
        EXPECT_EQ(series.code, QStringLiteral("000001"));
        ASSERT_EQ(log.lines().size(), 1);
        EXPECT_TRUE(log.lines()[0].contains(QStringLiteral("sz000001.day")));
    }
    for (const QByteArray &broken : {bytes.left(bytes.size() - 1), bytes.left(31), QByteArray()}) {
        LogCapture log;
        EXPECT_FALSE(loader.load(makePath(dir, QStringLiteral("sz000002.day"), broken), source, series));
        EXPECT_EQ(series.size(), 0);
        EXPECT_EQ(log.lines().size(), broken.isEmpty() ? 0 : 1);
    }
}

TEST(DayFiles, ATerminalFolderGivesStocksByCodeAndEachCodeOnce)
{
    QTemporaryDir dir;
    for (const char *name :
         {"vipdoc/sh/lday/sh000001.day", "vipdoc/sz/lday/sz000001.day", "vipdoc/sh/lday/sh510300.day",
          "vipdoc/sh/lday/sh600000.day", "vipdoc/sz/lday/sz399001.day", "vipdoc/sh/lday/readme.txt"})
        makePath(dir, QString::fromLatin1(name), dayFileBytes(sevenDays()));
    KLineSource source{dir.path(), QStringLiteral("tdx")};
    const auto names = [](const StockFileList &files) {
        QStringList list;
        for (const QString &path : files)
            list << QFileInfo(path).fileName();
        return list;
    };
    EXPECT_EQ(names(source.list()), (QStringList{"sz000001.day", "sh600000.day"}));
    source.stocks = QStringLiteral("all");
    LogCapture log;
    EXPECT_EQ(names(source.list()),
              (QStringList{"sz000001.day", "sz399001.day", "sh510300.day", "sh600000.day"}));
    ASSERT_EQ(log.lines().size(), 1);
    EXPECT_TRUE(log.lines()[0].contains(QStringLiteral("sh000001.day")));

    // "auto" finds the terminal's folders; an lday folder named directly works too.
    source.format = QStringLiteral("auto");
    EXPECT_EQ(source.resolvedKind(), KLineFormat::Tdx);
    source.dir = dir.filePath(QStringLiteral("vipdoc/sh/lday"));
    source.stocks = QStringLiteral("only");
    EXPECT_EQ(names(source.list()), QStringList{"sh600000.day"});
}

TEST(CsvFiles, HeadersInAnyOrderQuotedFieldsMixedDatesAndGbk)
{
    const QString text =
        QStringLiteral("\"名称\";收盘;日期;开盘;最高;最低;成交量(股);备注\n"
                       "\"浦发;银行\";10.60;2021/1/5;10.55;10.70;10.50;1200;\"a \"\"b\"\"\n c\"\r\n"
                       "\n"
                       "x;10.5;20210104;10.4;10.6;10.3;1000;\n");
    QStringEncoder gbk("GB18030");
    QTemporaryDir dir;
    const QString path = makePath(dir, QStringLiteral("SH#600000.txt"), gbk(text));
    StockLoader loader;
    StockSeries series;
    KLineSource source{dir.path(), QStringLiteral("csv")};
    ASSERT_EQ(source.list(), QStringList{path});
    LogCapture log;
    loader.load(path, source, series);
    EXPECT_TRUE(log.lines().isEmpty());
    EXPECT_EQ(series.code, QStringLiteral("600000"));
    expectSameDays(series, fromText(R"([["2021-01-04","10.4","10.5","10.6","10.3","1000"],)"
                                    R"(["2021-01-05","10.55","10.60","10.70","10.50","1200"]])"));
}

TEST(CsvFiles, MissingColumnsBadRowsAndEmptyFilesAreReportedNotFatal)
{
    QTemporaryDir dir;
    StockLoader loader;
    StockSeries series;
    const struct {
        const char *content;
        const char *logged;
        int days;
    } cases[] = {
        {"date,open,high,low,volume\n2021-01-04,1,1,1,1\n", "missing column close", 0},
        {"", "empty", 0},
        {"trade_date,open,high,low,close,vol\n20210104,1,2,0.5,1.5,10\n2021-13-01,1,2,0.5,1.5,10\n"
         "20210105,0,2,0.5,1.5,10\n20210106,1,2,abc,1.5,10\n20210107,1,2,0.5,1.5\n",
         "4 of 5 rows skipped", 1},
    };
    for (const auto &c : cases) {
        const QString path = makePath(dir, QStringLiteral("600000.csv"), c.content);
        LogCapture log;
        EXPECT_TRUE(loader.readFile(path, KLineFormat::Csv, series));
        EXPECT_EQ(series.size(), c.days);
        ASSERT_EQ(log.lines().size(), 1) << c.logged;
        EXPECT_TRUE(log.lines()[0].contains(QLatin1String(c.logged))) << log.lines()[0].toStdString();
        EXPECT_TRUE(log.lines()[0].contains(path));
    }
}

TEST(CsvFiles, SplitterKeepsQuotedSeparatorsAndLineBreaks)
{
    CsvReader reader(u"a,\"b,c\",\"d\"\"e\"\r\n,\n\"x\ny\",z", QLatin1Char(','));
    QStringList row;
    ASSERT_TRUE(reader.readRow(row));
    EXPECT_EQ(row, (QStringList{"a", "b,c", "d\"e"}));
    ASSERT_TRUE(reader.readRow(row));
    EXPECT_EQ(row, (QStringList{"", ""}));
    ASSERT_TRUE(reader.readRow(row));
    EXPECT_EQ(row, (QStringList{"x\ny", "z"}));
    EXPECT_FALSE(reader.readRow(row));
    EXPECT_EQ(CsvReader::guessSeparator(u"\"a;b\"\tc\td;e\n,,,,"), QLatin1Char('\t'));
}
