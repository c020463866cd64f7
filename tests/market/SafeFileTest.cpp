#include "market/SafeFile.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <sys/stat.h>

namespace {

mode_t kindOf(const QString &path)
{
    struct stat entry;
    return ::lstat(QFile::encodeName(path).constData(), &entry) == 0 ? entry.st_mode & S_IFMT : 0;
}

} // namespace

// Plain replacing and a missing folder are what every run's output does; these
// are the targets a replacement must refuse or reach through a link.
TEST(ReplacingFiles, DirectoriesFifosAndDevicesAreRefusedAndStayWhatTheyWere)
{
    QTemporaryDir dir;
    QDir(dir.path()).mkdir(QStringLiteral("folder"));
    QStringList targets = makeSpecialNodes(dir.path());
    ASSERT_FALSE(targets.isEmpty());
    targets.append(dir.filePath(QStringLiteral("folder")));
    for (const QString &target : targets) {
        const mode_t kind = kindOf(target);
        for (const SymlinkRule rule : {SymlinkRule::FollowToRegularFile, SymlinkRule::Refuse}) {
            const QString error = SafeFile::replace(target, "x", rule);
            EXPECT_TRUE(error.contains(QStringLiteral("not a regular file"))) << error.toStdString();
            EXPECT_EQ(kindOf(target), kind) << target.toStdString();
        }
        // A link to such a node is no way around the refusal.
        const QString link = target + QStringLiteral(".link");
        QFile::link(target, link);
        EXPECT_FALSE(SafeFile::replace(link, "x", SymlinkRule::FollowToRegularFile).isEmpty());
        EXPECT_EQ(kindOf(target), kind);
    }
}

TEST(ReplacingFiles, ALinkIsFollowedToItsRegularFileOnlyWhereTheUserMayHaveMadeIt)
{
    QTemporaryDir dir;
    QDir(dir.path()).mkdir(QStringLiteral("elsewhere"));
    const QString real = dir.filePath(QStringLiteral("elsewhere/config.conf"));
    const QString link = dir.filePath(QStringLiteral("config.conf"));
    writeTestFile(real, "old");
    ASSERT_TRUE(QFile::link(real, link));

    EXPECT_EQ(SafeFile::replace(link, "new", SymlinkRule::FollowToRegularFile), QString());
    EXPECT_EQ(readTestFile(real), QByteArray("new"));
    EXPECT_TRUE(QFileInfo(link).isSymLink());

    // A link planted where we download is not written through, nor replaced.
    const QString error = SafeFile::replace(link, "planted", SymlinkRule::Refuse);
    EXPECT_TRUE(error.contains(QStringLiteral("symbolic link"))) << error.toStdString();
    EXPECT_EQ(readTestFile(real), QByteArray("new"));
    EXPECT_TRUE(QFileInfo(link).isSymLink());

    // A link to nothing would create a file wherever it points.
    const QString dangling = dir.filePath(QStringLiteral("dangling"));
    QFile::link(dir.filePath(QStringLiteral("elsewhere/none")), dangling);
    EXPECT_FALSE(SafeFile::replace(dangling, "x", SymlinkRule::FollowToRegularFile).isEmpty());
    EXPECT_FALSE(QFile::exists(dir.filePath(QStringLiteral("elsewhere/none"))));
}
