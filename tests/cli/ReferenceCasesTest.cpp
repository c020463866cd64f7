#include "CliRun.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <QFileInfo>

// The reference cases beside the project: strategies, data and the output an
// independent implementation produced. Skipped where they are not present.
TEST(ReferenceCases, EveryCaseMatches)
{
    const QString check = sharedDir() + QStringLiteral("/golden/check");
    if (!QFileInfo::exists(check))
        GTEST_SKIP() << "no reference cases at " << check.toStdString();
    QProcess process;
    process.start(QStringLiteral("python3"), {check, QStringLiteral(ORVEL_CLI), QStringLiteral("--brief")});
    ASSERT_TRUE(process.waitForFinished(600000));
    const QString report = QString::fromUtf8(process.readAllStandardOutput());
    EXPECT_EQ(process.exitCode(), 0) << report.toStdString();
    EXPECT_TRUE(report.contains(QStringLiteral(" 0 failed"))) << report.toStdString();
}
