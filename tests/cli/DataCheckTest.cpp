#include "CliRun.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

namespace {

// Seven plausible days; each broken file below changes one thing in them.
QByteArray goodDays()
{
    return QByteArray::fromStdString(klineText({{"2021-01-04", 10, 10.2, 10.3, 9.9, 100},
                                                {"2021-01-05", 10.2, 10.4, 10.5, 10.1, 100},
                                                {"2021-01-06", 10.4, 10.3, 10.6, 10.2, 100},
                                                {"2021-01-07", 10.3, 10.5, 10.7, 10.2, 100},
                                                {"2021-01-08", 10.5, 10.6, 10.8, 10.4, 100},
                                                {"2021-01-11", 10.6, 10.7, 10.9, 10.5, 100},
                                                {"2021-01-12", 10.7, 10.8, 11.0, 10.6, 100}}));
}

QByteArray changed(const QByteArray &from, const QByteArray &to) { return goodDays().replace(from, to); }

// True when a line of `out` starts with `name` and holds `text`.
bool reports(const QString &out, const QString &name, const QString &text)
{
    for (const QString &line : out.split(QLatin1Char('\n'))) {
        if (line.startsWith(name + QStringLiteral(": ")) && line.contains(text))
            return true;
    }
    return false;
}

} // namespace

TEST(DataDoctor, ListsEveryBrokenFileAndExitsSeven)
{
    QTemporaryDir dir;
    const auto write = [&dir](const char *name, const QByteArray &bytes) {
        ASSERT_TRUE(writeTestFile(dir.filePath(QString::fromLatin1(name)), bytes));
    };
    write("600000", goodDays());
    write("600001", changed("2021-01-08", "2021-01-05"));
    write("600002", changed("\"10.400000\",\"10.300000\"", "\"0\",\"10.300000\""));
    write("600003", changed("\"10.700000\",\"10.200000\"", "\"10.100000\",\"10.200000\""));
    write("600004", changed("2021-01-12", QByteArray("2021-01-1\0002", 11)));
    write("600005", QByteArray::fromStdString(klineText({{"2021-01-04", 1, 1, 1, 1, 1}})));
    const int nodes = int(makeSpecialNodes(dir.path()).size());

    const CliRun run = runCli({"check", dir.path()});
    EXPECT_EQ(run.exitCode, 7) << run.err.toStdString();
    EXPECT_FALSE(run.out.contains(QStringLiteral("600000"))) << run.out.toStdString();
    EXPECT_TRUE(reports(run.out, "600001", "dates repeat or go back (1 处, 首次 / 1×, first 2021-01-05)"))
        << run.out.toStdString();
    EXPECT_TRUE(reports(run.out, "600002", "not above 0"));
    EXPECT_TRUE(reports(run.out, "600003", "high below low"));
    EXPECT_TRUE(reports(run.out, "600004", "NUL or control bytes"));
    EXPECT_TRUE(reports(run.out, "600005", "six days or fewer"));
    EXPECT_TRUE(reports(run.out, "fifo", "not a regular file"));
    EXPECT_TRUE(run.out.endsWith(
        QStringLiteral("共 %1 个文件, %2 个有问题, 0 条提示 / %1 files, %2 with problems, 0 hints\n")
            .arg(6 + nodes)
            .arg(5 + nodes)))
        << run.out.toStdString();
}

TEST(DataDoctor, LargeJumpsAreOnlyHintsInTheConfiguredFolder)
{
    QTemporaryDir dir;
    QDir(dir.path()).mkdir(QStringLiteral("data"));
    writeTestFile(dir.filePath(QStringLiteral("data/600000")),
                  changed("\"10.500000\",\"10.600000\"", "\"10.5\",\"16\""));
    const CliRun run = runCli({"check"}, dir.path());
    EXPECT_EQ(run.exitCode, 0) << run.out.toStdString();
    EXPECT_TRUE(run.out.contains(QStringLiteral("提示 600000: 2021-01-08 收盘价变动 / close moved +52.4%\n"
                                                "提示 600000: 2021-01-11 收盘价变动 / close moved -33.1%\n")))
        << run.out.toStdString();
}
