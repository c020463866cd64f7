#include "CliRun.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

namespace {

CliRun backtest(const QTemporaryDir &dir, const QString &out, const QStringList &more)
{
    return runCli(QStringList{"backtest", kDefaultScript, "--data", kSampleData, "--out", dir.filePath(out)} +
                      more,
                  dir.path());
}

} // namespace

// The files, the report included, are of the run as written: over any
// number of threads, and also when --compare-rules runs it again with every rule on.
TEST(ReportCommand, WritesTheReportAndLeavesTheRunAsItWas)
{
    QTemporaryDir dir;
    const CliRun plain = backtest(dir, "plain.csv", {"--jobs", "1"});
    const CliRun one = backtest(dir, "one.csv", {"--jobs", "1", "--report", dir.filePath("one")});
    const CliRun two =
        backtest(dir, "two.csv", {"--jobs", "2", "--report", dir.filePath("two"), "--compare-rules"});
    ASSERT_EQ(plain.exitCode, 0);
    EXPECT_EQ(one.exitCode, 0) << one.err.toStdString();
    EXPECT_EQ(one.out, plain.out);
    EXPECT_FALSE(plain.out.contains(QStringLiteral("规则影响")));
    for (const char *csv : {"one.csv", "two.csv"})
        EXPECT_EQ(readTestFile(dir.filePath(csv)), readTestFile(dir.filePath("plain.csv"))) << csv;
    for (const char *name : {"report.json", "equity.csv", "report.html"}) {
        const QByteArray bytes = readTestFile(QDir(dir.filePath("one")).filePath(QString::fromLatin1(name)));
        EXPECT_FALSE(bytes.isEmpty()) << name;
        EXPECT_EQ(bytes, readTestFile(QDir(dir.filePath("two")).filePath(QString::fromLatin1(name)))) << name;
    }
    const QJsonObject json = QJsonDocument::fromJson(readTestFile(dir.filePath("one/report.json"))).object();
    // The summary's own count: the line "买卖次数:N" of the same run.
    EXPECT_TRUE(
        plain.out.startsWith(QStringLiteral("买卖次数:%1\n").arg(json["trades"]["summaryCount"].toInt())));
    EXPECT_GT(json["daily"].toArray().size(), 0);
    // Without a real-account rule the report says nothing of them.
    EXPECT_FALSE(json.contains("rules"));
    EXPECT_FALSE(readTestFile(dir.filePath("one/report.html")).contains("实盘规则影响"));
#ifdef ORVEL_BUILD_GUI
    // The charts come from the plugin the command line loads only for a report.
    EXPECT_EQ(readTestFile(dir.filePath("one/report.html")).count("data:image/png"), 2);
#endif

    // The comparison: the run as written, then as a real account could trade it.
    const QStringList lines = two.out.split(QLatin1Char('\n'));
    ASSERT_EQ(lines.size(), 12) << two.out.toStdString();
    EXPECT_EQ(lines[0], QStringLiteral("按脚本:"));
    EXPECT_EQ(lines.mid(1, 4).join(QLatin1Char('\n')) + QLatin1Char('\n'), plain.out);
    EXPECT_EQ(lines[5], QStringLiteral("按实盘规则:"));
    EXPECT_TRUE(lines[10].startsWith(QStringLiteral("规则影响: T+1 推迟卖出 "))) << lines[10].toStdString();
    EXPECT_NE(lines.mid(6, 4), lines.mid(1, 4)); // the rules change the bundled data's results
}

// The report is of the run as written, also when --compare-rules runs the
// script a second time with every rule on.
TEST(ReportCommand, TellsWhatTheScriptsOwnRulesChanged)
{
    QTemporaryDir dir;
    const QString script = writeScript(dir, readTestFile(kDefaultScript) +
                                                "\nconfig.trade.t1,yes\nconfig.trade.stop.intraday,yes");
    const CliRun run = runCli({"backtest", script, "--data", kSampleData, "--out", dir.filePath("out.csv"),
                               "--compare-rules", "--report", dir.filePath("report")},
                              dir.path());
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QString asWritten = run.out.section(QLatin1Char('\n'), 5, 5);
    ASSERT_TRUE(asWritten.startsWith(QStringLiteral("规则影响:"))) << run.out.toStdString();

    const QJsonObject rules = QJsonDocument::fromJson(readTestFile(dir.filePath("report/report.json")))
                                  .object()["rules"]
                                  .toObject();
    EXPECT_EQ(asWritten, QStringLiteral("规则影响: T+1 推迟卖出 %1 笔, 涨停未买入 %2 笔, 跌停未卖出 %3 笔, "
                                        "盘中止损 %4 笔")
                             .arg(rules["t1Delayed"].toInt(-1))
                             .arg(rules["limitUpNotBought"].toInt(-1))
                             .arg(rules["limitDownNotSold"].toInt(-1))
                             .arg(rules["stopIntraday"].toInt(-1)));
    EXPECT_GT(rules["t1Delayed"].toInt(), 0);
    EXPECT_GT(rules["stopIntraday"].toInt(), 0);
    const QString html = QString::fromUtf8(readTestFile(dir.filePath("report/report.html")));
    EXPECT_TRUE(html.contains(QStringLiteral("实盘规则影响")));
    EXPECT_TRUE(html.contains(QStringLiteral(">盘中止损</td>")));
}

TEST(ReportCommand, AReportThatCannotBeWrittenExitsWithFive)
{
    QTemporaryDir dir;
    ASSERT_TRUE(writeTestFile(dir.filePath("taken"), "a file where the folder should be"));
    const CliRun run = backtest(dir, "out.csv", {"--report", dir.filePath("taken")});
    EXPECT_EQ(run.exitCode, 5);
    EXPECT_TRUE(run.err.contains(QStringLiteral("无法写入报告"))) << run.err.toStdString();
    EXPECT_TRUE(run.out.startsWith(QStringLiteral("买卖次数:"))); // the run itself still reports
    EXPECT_EQ(readTestFile(dir.filePath("taken")), "a file where the folder should be");
}
