#include "TestSupport.h"
#include "engine/BacktestRun.h"
#include "engine/OutputCsv.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

TEST(BadData, AWholeDirectoryOfBrokenFilesRunsThroughAndLogsWhatCannotBeOpened)
{
    QTemporaryDir dir;
    QByteArray binary(4096, '\0');
    for (int i = 0; i < binary.size(); ++i)
        binary[i] = char(i * 131 % 256);
    const std::pair<const char *, QByteArray> files[] = {
        {"600001", ""},
        {"600002", binary},
        {"600003", flatDays().left(77)},
        {"600004",
         "[[d1,1,2,3,4],[d2,1,2,3,4],[d3,1,2,3,4],[d4,1,2,3,4],[d5,1,2,3,4],[d6,1,2,3,4],[d7,1,2,3,4]]"},
        {"600005", flatDays().replace(",10,10,", ",1e999,99999999999999999999999999,")},
        {"600006", flatDays().replace(",10,10,", ",nan,-inf,")},
        {"ab", flatDays()},       // too short to carry a code
        {"sh600007", flatDays()}, // no bare "600007" beside it
        {"sz600008", flatDays()}, // "600008" is a folder
        {"600010", flatDays()},
    };
    for (const auto &[name, bytes] : files)
        ASSERT_TRUE(writeTestFile(dir.filePath(QString::fromLatin1(name)), bytes));
    QDir(dir.path()).mkdir(QStringLiteral("600008"));

    LogCapture log;
    BacktestRun run(QStringLiteral("config.trade.sale.point,close\nconfig.trade.max.hold.day,1"),
                    QStringLiteral("buy.vol,0>value,100"), dir.path());
    run.setJobs(2);
    const TradeBook book = run.run();

    // The signal on the seventh day buys on the eighth, sold the same day.
    // Unreadable numbers read 0: a gap from or to 0 is no buy.
    EXPECT_EQ(outputCsvText(book), QStringLiteral("600010,2020-01-17,10,2020-01-17,10,1,持股时间到期\n"));
    QStringList failures = log.lines().filter(QStringLiteral("open file failed:"));
    EXPECT_EQ(failures.size(), 3)
        << log.lines().join(QLatin1Char('\n')).toStdString(); // ab, sh600007, sz600008
    EXPECT_EQ(log.lines().size(), failures.size());
}
