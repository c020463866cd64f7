#include "CliRun.h"
#include "DayFileSupport.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

namespace {

// Buys and sells often, and reads every kind of value the bars feed.
const QByteArray kBusyScript = "config.trade.max.hold.day,5\nconfig.trade.min.exclude,0\n"
                               "config.trade.max.count,2\nconfig.source.ticket.dir,tick\n"
                               "buy.close,0>ma,5,0\nbuy.vol,0>volma,5,-1\nsale.close,0<ema,10,0";

const QStringList kTerms{"close,0",  "increase,0",     "swing,0",      "ma,5,0",
                         "ema,12,0", "volma,5,0",      "boll.upper,0", "macd.bar,0",
                         "kdj.j,0",  "dmi.adx,14,6,0", "k.十字星,0",   "k.阳吞阴,0"};

// The backtest's output.csv and summary over `data` with the data format given.
QByteArray backtest(const QTemporaryDir &work, const QString &data, const char *format)
{
    const QString script =
        writeScript(work, QByteArray("config.source.k.format,") + format + "\n" + kBusyScript);
    const QString out = work.filePath(QStringLiteral("output.csv"));
    QFile::remove(out);
    const CliRun run = runCli({"backtest", script, "--data", data, "--out", out, "--jobs", "2"}, work.path());
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    return readTestFile(out) + run.out.toUtf8();
}

} // namespace

TEST(ImportedData, ADayFileAndTheSameDaysAsTextGiveTheSameResults)
{
    QTemporaryDir work;
    QDir(work.path()).mkpath(QStringLiteral("tdx/sh/lday"));
    QDir(work.path()).mkpath(QStringLiteral("text"));
    for (const char *code : {"600000", "600001", "600002"}) {
        const std::vector<DayRecord> days = randomDays(220, unsigned(QByteArray(code).toInt()));
        writeTestFile(work.filePath(QStringLiteral("tdx/sh/lday/sh%1.day").arg(code)), dayFileBytes(days));
        writeTestFile(work.filePath(QStringLiteral("text/%1").arg(code)), klineTextOf(days));
    }
    const QByteArray fromText = backtest(work, work.filePath("text"), "default");
    EXPECT_GT(fromText.count('\n'), 20); // enough trades to compare
    EXPECT_EQ(backtest(work, work.filePath("tdx"), "tdx"), fromText);
    EXPECT_EQ(backtest(work, work.filePath("tdx"), "auto"), fromText);

    const CliRun day = runCli(QStringList{"eval", work.filePath("tdx/sh/lday/sh600001.day")} + kTerms);
    const CliRun text = runCli(QStringList{"eval", work.filePath("text/600001")} + kTerms);
    EXPECT_EQ(day.exitCode, 0);
    EXPECT_EQ(day.out.count(QLatin1Char('\n')), 220);
    EXPECT_EQ(day.out, text.out);
}

TEST(ImportedData, ConvertWritesTextFilesAndTellsByItsExitCode)
{
    QTemporaryDir work;
    const QString source = work.filePath(QStringLiteral("csv"));
    QDir().mkpath(source);
    writeTestFile(source + "/sz000001.csv", "日期,开盘,最高,最低,收盘,成交量\n2021-01-05,10.2,10.5,10.1,10.4,"
                                            "900\n2021-01-04,10,10.3,9.9,10.2,800\n");
    writeTestFile(source + "/600000.csv", "date,open\n"); // no usable column: skipped
    const QString data = work.filePath(QStringLiteral("data"));
    QDir().mkpath(data);
    writeTestFile(data + "/000001", "old");

    CliRun run = runCli({"convert", "--from", "csv", source, "--data", data});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.err.contains(QStringLiteral("600000.csv")));
    EXPECT_EQ(
        readTestFile(data + "/000001"),
        R"([["2021-01-04","10","10.2","10.3","9.9","800"],["2021-01-05","10.2","10.4","10.5","10.1","900"]])");
    EXPECT_FALSE(QFileInfo::exists(data + "/600000"));

    EXPECT_EQ(runCli({"convert", "--from", "tdx", source, "--data", data}).exitCode, 3); // no day files
    EXPECT_EQ(runCli({"convert", "--from", "excel", source, "--data", data}).exitCode, 1);
    EXPECT_EQ(runCli({"convert", "--from", "csv", source}).exitCode, 1);
    // A folder where the stock's file would go, and a file where the folder would.
    QFile::remove(data + "/000001");
    QDir().mkpath(data + "/000001");
    EXPECT_EQ(runCli({"convert", "--from", "csv", source, "--data", data}).exitCode, 5);
    EXPECT_EQ(runCli({"convert", "--from", "csv", source, "--data", source + "/600000.csv"}).exitCode, 5);
}

// The real day files beside the project: reading them directly and reading
// what `convert` made of them give the same trades.
TEST(ImportedData, ATerminalsDayFilesTradeLikeTheirConvertedFolder)
{
    const QString sample = sharedDir() + QStringLiteral("/data/tdx-day-sample");
    if (!QFileInfo::exists(sample))
        GTEST_SKIP() << "no day files at " << sample.toStdString();
    QTemporaryDir work;
    const QString converted = work.filePath(QStringLiteral("converted"));
    const CliRun run = runCli({"convert", "--from", "tdx", sample, "--data", converted});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(QDir(converted).entryList(QDir::Files).size(), 20);
    const QByteArray direct = backtest(work, sample, "tdx");
    EXPECT_GT(direct.count('\n'), 100);
    EXPECT_EQ(direct, backtest(work, converted, "default"));
}
