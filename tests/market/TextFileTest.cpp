#include "market/TextFile.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

TEST(TextFiles, Utf8IsRecognisedEverythingElseIsGbkAndBadBytesAreReplacedNeverLost)
{
    const QString chinese = QStringLiteral("买入条件");
    const QByteArray gbk = TextFile::encode(chinese, TextEncoding::Gbk);
    EXPECT_EQ(gbk, QByteArray("\xC2\xF2\xC8\xEB\xCC\xF5\xBC\xFE"));
    EXPECT_EQ(TextFile::decode(chinese.toUtf8()), chinese);
    EXPECT_EQ(TextFile::decode(gbk), chinese);
    // One BOM, of either encoding, is dropped; a second one is text.
    EXPECT_EQ(TextFile::decode("\xEF\xBB\xBF" + chinese.toUtf8()), chinese);
    EXPECT_EQ(TextFile::decode("\x84\x31\x95\x33" + gbk), chinese);
    EXPECT_EQ(TextFile::decode("\xEF\xBB\xBF\xEF\xBB\xBF"
                               "buy."),
              QStringLiteral("\uFEFFbuy."));
    EXPECT_EQ(TextFile::decode("a\x80"
                               "b\xFF"),
              QStringLiteral("a\uFFFDb\uFFFD"));
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
