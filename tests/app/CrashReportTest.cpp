#include "TestSupport.h"
#include "app/CrashClock.h"
#include "app/CrashReportDir.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <ctime>
#include <tuple>

#include <unistd.h>

namespace {

// Reports are named in local time; the probe runs eight hours east of UTC so
// that a wrong sign or a missing offset shows in the name.
constexpr int kProbeUtcOffset = 8 * 3600;

struct ProbeRun {
    int exitCode = -1;      // -1 unless the probe ended by exiting
    QDateTime startedLocal; // in the probe's zone, whole seconds
    QDateTime endedLocal;
};

ProbeRun runProbe(const QString &fault, const QString &workDir)
{
    QProcess probe;
    probe.setWorkingDirectory(workDir);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TZ"), QStringLiteral("CST-8"));
    probe.setProcessEnvironment(environment);
    probe.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    const QDateTime started = QDateTime::currentDateTimeUtc().addSecs(kProbeUtcOffset);
    probe.start(QStringLiteral(ORVEL_CRASH_PROBE), {fault});
    probe.waitForFinished(30000);
    const bool exited = probe.exitStatus() == QProcess::NormalExit && probe.state() == QProcess::NotRunning;
    return {exited ? probe.exitCode() : -1, started.addMSecs(-started.time().msec()),
            QDateTime::currentDateTimeUtc().addSecs(kProbeUtcOffset)};
}

QDateTime nameTime(const QRegularExpressionMatch &name)
{
    const auto field = [&](int i) { return name.captured(i).toInt(); };
    return QDateTime(QDate(field(1), field(2), field(3)), QTime(field(4), field(5), field(6)), Qt::UTC);
}

// Year, month, day, hour, minute, second with their widths; the millisecond
// has two digits at least and three when it needs them; the random part two.
const QRegularExpression reportName(QStringLiteral(
    R"(^orvel\.quant(\d{4})-(\d{2})-(\d{2})-(\d{2})-(\d{2})-(\d{2})-(\d{2}|[1-9]\d{2})-(\d{2})\.dmp$)"));

struct FaultCase {
    const char *fault;
    const char *cause; // expected in the report
    bool onWorker;     // the report must name a thread other than the main one
    bool hasAddress = true;
};

QStringList entriesOf(const QString &dir)
{
    return QDir(dir).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

} // namespace

TEST(CrashReport, EachFaultLeavesOneReportNamedByTimeAndExitsWithOne)
{
    const FaultCase cases[] = {
        {"null-write-worker", "cause: signal 11 (SIGSEGV), code 1\nfault address: 0x0\n", true},
        {"killed", "cause: signal 11 (SIGSEGV), code 0\nsent with kill() by process ", false, false},
        {"abort", "cause: signal 6 (SIGABRT)", false, false},
        {"qfatal", "cause: signal 6 (SIGABRT)", false, false},
        {"bad-alloc", "cause: memory allocation failed", false, false},
        {"uncaught", "cause: uncaught exception: probe", false, false},
        {"stack-overflow", "cause: signal 11 (SIGSEGV)", false},
        {"stack-overflow-worker", "cause: signal 11 (SIGSEGV)", true},
    };
    for (const FaultCase &c : cases) {
        SCOPED_TRACE(c.fault);
        QTemporaryDir work;

        const ProbeRun run = runProbe(QString::fromLatin1(c.fault), work.path());
        EXPECT_EQ(run.exitCode, 1);

        // Only the finished report: no temporary file left beside it.
        const QString crash = work.filePath(QStringLiteral("crash"));
        const QStringList entries = entriesOf(crash);
        ASSERT_EQ(entries.size(), 1) << entries.join(QLatin1Char(' ')).toStdString();
        const QRegularExpressionMatch name = reportName.match(entries.front());
        ASSERT_TRUE(name.hasMatch()) << entries.front().toStdString();
        EXPECT_GE(nameTime(name), run.startedLocal) << entries.front().toStdString();
        EXPECT_LE(nameTime(name), run.endedLocal) << entries.front().toStdString();

        const QString text = QString::fromLatin1(readTestFile(crash + QLatin1Char('/') + entries.front()));
        EXPECT_TRUE(text.startsWith(QStringLiteral("Orvel " ORVEL_VERSION " crash report\n")));
        EXPECT_TRUE(text.contains(QLatin1String(c.cause))) << text.toStdString();
        EXPECT_EQ(text.contains(QLatin1String("fault address")), c.hasAddress) << text.toStdString();
        // The name carries the report's millisecond as "%02d" prints it: 7 as "07", 123 as "123".
        const QRegularExpressionMatch time =
            QRegularExpression(QStringLiteral("\ntime: [^.]+\\.(\\d{3}) ")).match(text);
        ASSERT_TRUE(time.hasMatch()) << text.toStdString();
        EXPECT_EQ(name.captured(7), QString::asprintf("%02d", time.captured(1).toInt()));
        const QRegularExpressionMatch ids =
            QRegularExpression(QStringLiteral("\nprocess: (\\d+)\nthread: (\\d+)\n")).match(text);
        ASSERT_TRUE(ids.hasMatch()) << text.toStdString();
        EXPECT_EQ(ids.captured(1) != ids.captured(2), c.onWorker) << text.toStdString();
        // At least one frame follows the header lines.
        EXPECT_FALSE(text.section(QStringLiteral("\nbacktrace:\n"), 1).trimmed().isEmpty())
            << text.toStdString();
    }
}

TEST(CrashReport, NormalRunLeavesNoReport)
{
    QTemporaryDir work;
    EXPECT_EQ(runProbe(QStringLiteral("none"), work.path()).exitCode, 0);
    EXPECT_TRUE(QDir(work.path()).isEmpty());
}

TEST(CrashReport, ACrashPathThatIsNotARealDirectoryGetsNoReportButStillExitsWithOne)
{
    // A plain file where the directory should be, and a link that would lead
    // the report elsewhere.
    for (const bool link : {false, true}) {
        SCOPED_TRACE(link ? "symlink" : "plain file");
        QTemporaryDir work;
        const QString crash = work.filePath(QStringLiteral("crash"));
        const QString elsewhere = work.filePath(QStringLiteral("elsewhere"));
        ASSERT_TRUE(QDir().mkpath(elsewhere));
        ASSERT_TRUE(link ? QFile::link(elsewhere, crash) : writeTestFile(crash, "not a directory"));

        EXPECT_EQ(runProbe(QStringLiteral("abort"), work.path()).exitCode, 1);
        EXPECT_EQ(entriesOf(work.path()), QStringList({"crash", "elsewhere"}));
        EXPECT_TRUE(entriesOf(elsewhere).isEmpty());
        EXPECT_EQ(readTestFile(crash), link ? QByteArray() : QByteArray("not a directory"));
    }
}

TEST(CrashReport, OnlyTheTwentyNewestReportsAreKept)
{
    // 25 earlier reports in one second, their milliseconds from 80 to 104:
    // "100" is newer than "99" although it sorts before it as text.
    QTemporaryDir work;
    const QString crash = work.filePath(QStringLiteral("crash"));
    ASSERT_TRUE(QDir().mkpath(crash));
    const auto earlier = [](int ms) {
        return QString::asprintf("orvel.quant2020-01-02-03-04-05-%02d-42.dmp", ms);
    };
    for (int ms = 80; ms <= 104; ++ms)
        ASSERT_TRUE(writeTestFile(crash + QLatin1Char('/') + earlier(ms), "old"));
    ASSERT_TRUE(writeTestFile(crash + QStringLiteral("/notes.txt"), "mine"));

    EXPECT_EQ(runProbe(QStringLiteral("abort"), work.path()).exitCode, 1);
    QStringList left = entriesOf(crash);
    EXPECT_TRUE(left.removeOne(QStringLiteral("notes.txt")));
    ASSERT_EQ(left.size(), 20) << left.join(QLatin1Char(' ')).toStdString();
    EXPECT_EQ(left.filter(reportName).size(), 20);
    for (int ms = 86; ms <= 104; ++ms)
        EXPECT_TRUE(left.removeOne(earlier(ms))) << ms;
    EXPECT_TRUE(left.size() == 1 && !left.front().startsWith(QStringLiteral("orvel.quant2020")));
}

TEST(CrashReport, ANameThatExistsIsNeverOpenedNorFollowed)
{
    QTemporaryDir work;
    const QString victim = work.filePath(QStringLiteral("victim"));
    const QString absent = work.filePath(QStringLiteral("absent"));
    ASSERT_TRUE(writeTestFile(victim, "precious"));
    const int dir =
        CrashReportDir::open(QFile::encodeName(work.filePath(QStringLiteral("crash"))).constData());
    ASSERT_GE(dir, 0);
    ASSERT_EQ(::symlinkat(QFile::encodeName(victim).constData(), dir, "to-victim"), 0);
    ASSERT_EQ(::symlinkat(QFile::encodeName(absent).constData(), dir, "to-absent"), 0);

    EXPECT_EQ(CrashReportDir::createNew(dir, "to-victim"), -1);
    EXPECT_EQ(CrashReportDir::createNew(dir, "to-absent"), -1);
    EXPECT_EQ(readTestFile(victim), "precious");
    EXPECT_FALSE(QFileInfo::exists(absent));
    const int fd = CrashReportDir::createNew(dir, "fresh");
    EXPECT_GE(fd, 0);
    ::close(fd);
    ::close(dir);
}

TEST(CrashClock, AgreesWithTheCLibraryCalendar)
{
    // Leap days of ordinary, century and 400-year leap years, year ends, and a
    // spread across 1901..2106 that lands on every time of day.
    std::vector<long long> moments = {0, -1, 951782400, 951868799, 1709251199, 1735689599, 4107542400};
    for (long long s = -2'147'483'648LL; s < 4'294'967'296LL; s += 7'776'013)
        moments.push_back(s);
    for (const long long seconds : moments) {
        SCOPED_TRACE(seconds);
        const std::time_t t = static_cast<std::time_t>(seconds);
        std::tm expected = {};
        ASSERT_NE(gmtime_r(&t, &expected), nullptr);
        expected.tm_year += 1900; // as the report writes them
        expected.tm_mon += 1;
        const CrashClockTime a = crashClockTime(seconds);
        EXPECT_EQ(std::tie(a.year, a.month, a.day, a.hour, a.minute, a.second),
                  std::tie(expected.tm_year, expected.tm_mon, expected.tm_mday, expected.tm_hour,
                           expected.tm_min, expected.tm_sec));
    }
}
