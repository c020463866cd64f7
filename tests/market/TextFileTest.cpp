#include "market/TextFile.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

TEST(TextFiles, Utf8IsRecognisedAndEverythingElseIsGbk)
{
    const QString chinese = QStringLiteral("买入条件");
    EXPECT_EQ(TextFile::decode(chinese.toUtf8()), chinese);
    EXPECT_EQ(TextFile::decode("\xEF\xBB\xBF" + chinese.toUtf8()), chinese);
    EXPECT_EQ(TextFile::decode(TextFile::encode(chinese, TextEncoding::Gbk)), chinese);
    EXPECT_EQ(TextFile::encode(chinese, TextEncoding::Gbk), QByteArray("\xC2\xF2\xC8\xEB\xCC\xF5\xBC\xFE"));
}

TEST(TextFiles, AFailedWriteLeavesThePreviousFile)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("output.csv"));
    EXPECT_TRUE(TextFile::writeAtomically(path, "first").isEmpty());
    EXPECT_TRUE(TextFile::writeAtomically(path, "second").isEmpty());
    EXPECT_EQ(readTextFile(path), QStringLiteral("second"));
    // A target that is a directory cannot be replaced; nothing is left behind.
    QDir(dir.path()).mkdir(QStringLiteral("busy"));
    EXPECT_FALSE(TextFile::writeAtomically(dir.filePath(QStringLiteral("busy")), "x").isEmpty());
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList{QStringLiteral("output.csv")});
}

TEST(TextFiles, AnUnreadableFileLogsAndReadsEmpty)
{
    LogCapture log;
    EXPECT_TRUE(readTextFile(QStringLiteral("/nonexistent/orvel/file")).isEmpty());
    ASSERT_EQ(log.lines().size(), 1);
    EXPECT_EQ(log.lines()[0], QStringLiteral("open file failed: No such file or directory"));
}
