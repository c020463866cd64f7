#include "CliRun.h"

#include <gtest/gtest.h>

#include <QCryptographicHash>
#include <QFile>
#include <QMap>
#include <QTemporaryDir>

// Figures committed beside the tests, so every build checks the README's
// example and every indicator even where the shared reference cases are absent.
// After a deliberate change, regenerate them with the command each file's
// first line names.
namespace {

const QString kGolden = QStringLiteral(ORVEL_SOURCE_DIR "/tests/golden/");
const QString kStock = QStringLiteral(ORVEL_SOURCE_DIR "/data/000044");

QStringList goldenLines(const QString &name)
{
    QFile file(kGolden + name);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

// The terms a golden file's first line names after "orvel-cli eval data/000044".
QStringList termsOf(const QString &header) { return header.split(QLatin1Char(' ')).mid(4); }

QStringList evalLines(const QStringList &terms)
{
    const CliRun run = runCli(QStringList{QStringLiteral("eval"), kStock} + terms);
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    return run.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

} // namespace

// The same bytes for any number of threads, and for the same threads twice.
TEST(InTreeGolden, DefaultScriptOnTheBundledDataWhateverTheThreads)
{
    const QStringList expected = goldenLines(QStringLiteral("default-script-on-data.txt"));
    ASSERT_EQ(expected.size(), 6);
    QTemporaryDir dir;
    const QString out = dir.filePath(QStringLiteral("output.csv"));
    for (const char *jobs : {"1", "2", "2", "5"}) {
        QFile::remove(out);
        const CliRun run = runCli({"backtest", ORVEL_SOURCE_DIR "/src/resources/default.script", "--data",
                                   ORVEL_SOURCE_DIR "/data", "--out", out, "--jobs", jobs});
        ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
        EXPECT_EQ(run.out, expected.mid(1, 4).join(QLatin1Char('\n')) + QLatin1Char('\n'));
        QFile csv(out);
        ASSERT_TRUE(csv.open(QIODevice::ReadOnly));
        const QByteArray digest = QCryptographicHash::hash(csv.readAll(), QCryptographicHash::Sha256).toHex();
        EXPECT_EQ(QStringLiteral("sha256 ") + QString::fromLatin1(digest), expected[5]) << "jobs " << jobs;
    }
}

TEST(InTreeGolden, EveryIndicatorKeepsItsValues)
{
    const QStringList expected = goldenLines(QStringLiteral("000044-indicators.eval"));
    ASSERT_GT(expected.size(), 50);
    QMap<QString, QString> byIndex;
    for (const QString &line : evalLines(termsOf(expected[0])))
        byIndex.insert(line.section(QLatin1Char('\t'), 0, 0), line);
    for (const QString &line : expected.mid(1))
        EXPECT_EQ(byIndex.value(line.section(QLatin1Char('\t'), 0, 0)), line);
}

TEST(InTreeGolden, EveryPatternHoldsOnTheSameBars)
{
    const QStringList expected = goldenLines(QStringLiteral("000044-patterns.txt")).mid(1);
    ASSERT_GT(expected.size(), 30);
    QStringList terms;
    for (const QString &line : expected)
        terms << line.section(QLatin1Char('\t'), 0, 0);
    QList<QStringList> holds(terms.size());
    for (const QString &bar : evalLines(terms)) {
        const QStringList fields = bar.split(QLatin1Char('\t'));
        for (qsizetype term = 0; term < terms.size() && term + 2 < fields.size(); ++term)
            if (fields[term + 2] == QLatin1String("true"))
                holds[term] << fields[0];
    }
    for (qsizetype term = 0; term < terms.size(); ++term)
        EXPECT_EQ(terms[term] + QLatin1Char('\t') + holds[term].join(QLatin1Char(',')), expected[term]);
}
