#include "market/TextFile.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

TEST(TextFiles, Utf8IsRecognisedAndEverythingElseIsGbk)
{
    const QString chinese = QStringLiteral("买入条件");
    EXPECT_EQ(TextFile::decode(chinese.toUtf8()), chinese);
    EXPECT_EQ(TextFile::decode("\xEF\xBB\xBF" + chinese.toUtf8()), chinese);
    EXPECT_EQ(TextFile::decode(TextFile::encode(chinese, TextEncoding::Gbk)), chinese);
    EXPECT_EQ(TextFile::encode(chinese, TextEncoding::Gbk), QByteArray("\xC2\xF2\xC8\xEB\xCC\xF5\xBC\xFE"));
}

// The GB18030 converter is kept between texts: a text that ends on a lead
// byte must not leave it waiting for the next one.
TEST(TextFiles, EveryGbkTextIsDecodedAfresh)
{
    const QByteArray chinese("\xd6\xd0\xce\xc4");
    EXPECT_EQ(TextFile::decode(chinese), QStringLiteral("中文"));
    EXPECT_EQ(TextFile::decode(QByteArray("\xff\x81")), QStringLiteral("\uFFFD\uFFFD"));
    EXPECT_EQ(TextFile::decode(chinese), QStringLiteral("中文"));
}

TEST(TextFiles, AnUnreadableFileLogsAndReadsEmpty)
{
    LogCapture log;
    EXPECT_TRUE(readTextFile(QStringLiteral("/nonexistent/orvel/file")).isEmpty());
    ASSERT_EQ(log.lines().size(), 1);
    EXPECT_EQ(log.lines()[0], QStringLiteral("open file failed: No such file or directory"));
}
