// Memory grows with what a run must hold, not with how the input repeats
// itself: a data file costs a small multiple of its size, and a script's
// repeated terms cost nothing per day.
#include "CliRun.h"
#include "DayFileSupport.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <string>
#include <vector>

extern char **environ;

namespace {

// The peak resident size of one orvel-cli run in bytes, or -1 when it did not
// end with exit 0. Measured by the kernel for that process alone.
long long peakBytesOfRun(const QStringList &arguments)
{
    std::vector<std::string> words{ORVEL_CLI};
    for (const QString &argument : arguments)
        words.push_back(argument.toStdString());
    std::vector<char *> argv;
    for (std::string &word : words)
        argv.push_back(word.data());
    argv.push_back(nullptr);
    posix_spawn_file_actions_t quiet;
    posix_spawn_file_actions_init(&quiet);
    posix_spawn_file_actions_addopen(&quiet, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&quiet, 2, "/dev/null", O_WRONLY, 0);
    pid_t pid = 0;
    const int spawned = posix_spawn(&pid, argv[0], &quiet, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&quiet);
    if (spawned != 0)
        return -1;
    int status = 0;
    rusage usage{};
    if (wait4(pid, &status, 0, &usage) != pid || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
        return -1;
    return (long long)usage.ru_maxrss * 1024;
}

// One stock of `days` days as a data folder; the size of its file.
qint64 writeStock(const QString &dir, int days)
{
    const QByteArray text = klineTextOf(randomDays(days, 1));
    QDir().mkpath(dir);
    writeTestFile(dir + QStringLiteral("/000001"), text);
    return text.size();
}

long long peakOfBacktest(const QTemporaryDir &dir, const QString &script, const QString &data)
{
    return peakBytesOfRun(
        {"backtest", script, "--data", data, "--out", dir.filePath("output.csv"), "--jobs", "1"});
}

} // namespace

TEST(MemoryBounds, ALargeDataFileCostsAtMostThreeTimesItsSize)
{
    QTemporaryDir dir;
    // Never buys: what the run holds beyond the program itself is the file.
    const QString script = writeScript(dir, "buy.close,0>value,100000");
    writeStock(dir.filePath("small"), 10);
    const qint64 size = writeStock(dir.filePath("large"), 500000);
    const long long small = peakOfBacktest(dir, script, dir.filePath("small"));
    const long long large = peakOfBacktest(dir, script, dir.filePath("large"));
    ASSERT_GT(small, 0);
    ASSERT_GT(large, 0);
    EXPECT_LE(large - small, 3 * size) << "file " << size << " bytes, peak " << large - small << " more";
}

TEST(MemoryBounds, RepeatedTermsShareOneLinePerStock)
{
    QTemporaryDir dir;
    writeStock(dir.filePath("data"), 20000);
    // Every statement reads the same two averages; none ever holds.
    QStringList repeated;
    for (int i = 0; i < 1000; ++i)
        repeated << QStringLiteral("buy.ma,5,0>value,%1|ma,10,0>value,%1").arg(1000000 + i);
    repeated += repeated; // each line twice
    const QString once = writeScript(dir, repeated.front().toUtf8(), "once.script");
    const QString many = writeScript(dir, repeated.join(QLatin1Char('\n')).toUtf8(), "many.script");
    const long long single = peakOfBacktest(dir, once, dir.filePath("data"));
    const long long thousands = peakOfBacktest(dir, many, dir.filePath("data"));
    ASSERT_GT(single, 0);
    ASSERT_GT(thousands, 0);
    // A line per term would be 4,000 × 20,000 days × 5 bytes = 400 MB; the
    // compiled statements themselves take a few megabytes.
    EXPECT_LT(thousands - single, 32ll << 20) << "peak " << thousands - single << " bytes more";
}
