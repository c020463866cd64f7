#include "CliRun.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

namespace {

const QByteArray kScript = "config.trade.max.hold.day,$hold\n"
                           "# ma,$n in a note needs no value\n"
                           "buy.close,-1<ma,$n,-1\n"
                           "buy.close,0>ma,$n,0\n"
                           "sale.close,0<ma,10,0";

struct SweepDir {
    QTemporaryDir dir;
    QString script = writeScript(dir, kScript);

    CliRun sweep(const QString &out, QStringList more = {}) const
    {
        return runCli(QStringList{"sweep", script, "--data", kSampleData, "--out", dir.filePath(out),
                                  "--vary", "n=4:8:2", "--vary", "hold=2,5,9"} +
                          more,
                      dir.path());
    }
};

QStringList cells(const QByteArray &line) { return QString::fromUtf8(line).split(QLatin1Char(',')); }

} // namespace

// Each row must be what a backtest of the filled-in script prints and reports.
TEST(SweepCommand, EveryRowIsTheBacktestOfItsFilledInScript)
{
    SweepDir d;
    const CliRun run = d.sweep(QStringLiteral("sweep.csv"), {"--jobs", "2"});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    QList<QByteArray> lines = readTestFile(d.dir.filePath(QStringLiteral("sweep.csv"))).split('\n');
    ASSERT_EQ(lines.size(), 11);
    EXPECT_EQ(lines.takeFirst(), "n,hold,买卖次数,平均持股天数,策略成功率,平均收益,总收益,最大回撤,夏普比率");
    EXPECT_EQ(lines.takeLast(), "");
    for (const QByteArray &line : lines) {
        const QStringList row = cells(line);
        QByteArray script = kScript;
        script.replace("$hold", row[1].toUtf8()).replace("ma,$n", "ma," + row[0].toUtf8());
        const QString one = writeScript(d.dir, script, QStringLiteral("one.script"));
        const QString report = d.dir.filePath(QStringLiteral("report"));
        const CliRun alone =
            runCli({"backtest", one, "--data", kSampleData, "--report", report}, d.dir.path());
        ASSERT_EQ(alone.exitCode, 0) << alone.err.toStdString();
        EXPECT_EQ(alone.out, QStringLiteral("买卖次数:%1\n平均持股天数:%2\n策略成功率:%3\n平均收益:%4\n")
                                 .arg(row[2], row[3], row[4], row[5]))
            << line.toStdString();
        const QJsonObject account =
            QJsonDocument::fromJson(readTestFile(report + QStringLiteral("/report.json")))
                .object()[QStringLiteral("account")]
                .toObject();
        EXPECT_EQ(row[6].toDouble(), account[QStringLiteral("totalReturn")].toDouble()) << line.toStdString();
        EXPECT_EQ(row[7].toDouble(), account[QStringLiteral("maxDrawdown")].toDouble()) << line.toStdString();
        EXPECT_EQ(row[8].toDouble(), account[QStringLiteral("sharpe")].toDouble()) << line.toStdString();
    }
    // The table ranks by total return, largest first.
    const QStringList shown = run.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    ASSERT_EQ(shown.size(), 10);
    EXPECT_GE(shown[1].split(QLatin1Char(' '), Qt::SkipEmptyParts)[6].toDouble(),
              shown[2].split(QLatin1Char(' '), Qt::SkipEmptyParts)[6].toDouble());
}

TEST(SweepCommand, ShardsMergedAreTheWholeSweep)
{
    SweepDir d;
    ASSERT_EQ(d.sweep(QStringLiteral("whole.csv")).exitCode, 0);
    QStringList parts;
    for (int shard = 1; shard <= 4; ++shard) {
        parts << d.dir.filePath(QStringLiteral("part%1.csv").arg(shard));
        ASSERT_EQ(
            d.sweep(QStringLiteral("part%1.csv").arg(shard), {"--shard", QStringLiteral("%1/4").arg(shard)})
                .exitCode,
            0);
    }
    const CliRun merge =
        runCli(QStringList{"sweep-merge"} + parts + QStringList{"--out", "merged.csv"}, d.dir.path());
    ASSERT_EQ(merge.exitCode, 0) << merge.err.toStdString();
    EXPECT_EQ(readTestFile(d.dir.filePath(QStringLiteral("merged.csv"))),
              readTestFile(d.dir.filePath(QStringLiteral("whole.csv"))));
    // Results of another grid do not join.
    writeTestFile(d.dir.filePath(QStringLiteral("other.csv")),
                  "m,买卖次数,平均持股天数,策略成功率,平均收益,总收益,最大回撤,夏普比率\n");
    EXPECT_EQ(runCli({"sweep-merge", parts[0], "other.csv"}, d.dir.path()).exitCode, 1);
}

TEST(SweepCommand, BadGridsAndPlaceholdersAreClearErrors)
{
    SweepDir d;
    const auto sweepWith = [&](const QStringList &vary) {
        QStringList arguments{"sweep", d.script, "--data", kSampleData};
        for (const QString &axis : vary)
            arguments << "--vary" << axis;
        return runCli(arguments, d.dir.path());
    };
    // Which ranges are bad is the grid's own test; here, how the command ends.
    const struct {
        QStringList vary;
        int exitCode;
        const char *told;
    } cases[] = {{{"n=8:4", "hold=2"}, 1, "--vary n"},
                 {{"n=1:1000", "hold=1:101"}, 1, "--force"},
                 {{"n=4"}, 2, "$hold"},
                 {{"n=4", "hold=2", "days=3"}, 2, "$days"}};
    for (const auto &c : cases) {
        const CliRun run = sweepWith(c.vary);
        EXPECT_EQ(run.exitCode, c.exitCode) << c.told;
        EXPECT_TRUE(run.err.contains(QString::fromUtf8(c.told))) << run.err.toStdString();
    }
    EXPECT_FALSE(QFile::exists(d.dir.filePath(QStringLiteral("sweep.csv"))));
}

TEST(SweepCommand, BacktestWarnsOfLeftoverPlaceholders)
{
    SweepDir d;
    const CliRun run = runCli({"backtest", d.script, "--data", kSampleData, "--out", "o.csv"}, d.dir.path());
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(run.err.contains(QStringLiteral("$hold, $n"))) << run.err.toStdString();
}
