#include "app/CrashClock.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <ctime>

namespace {

// Reports are named in local time; the probe runs eight hours east of UTC so
// that a wrong sign or a missing offset shows in the name.
constexpr int kProbeUtcOffset = 8 * 3600;

struct ProbeRun {
    bool exitedNormally = false;
    int exitCode = -1;
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

    ProbeRun run;
    const QDateTime started = QDateTime::currentDateTimeUtc().addSecs(kProbeUtcOffset);
    probe.start(QStringLiteral(ORVEL_CRASH_PROBE), {fault});
    probe.waitForFinished(30000);
    const QDateTime ended = QDateTime::currentDateTimeUtc().addSecs(kProbeUtcOffset);
    run.exitedNormally = probe.exitStatus() == QProcess::NormalExit && probe.state() == QProcess::NotRunning;
    run.exitCode = probe.exitCode();
    run.startedLocal = started.addMSecs(-started.time().msec());
    run.endedLocal = ended;
    return run;
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
};

} // namespace

TEST(CrashReport, EachFaultLeavesOneReportNamedByTimeAndExitsWithOne)
{
    const FaultCase cases[] = {
        {"null-write-worker", "cause: signal 11 (SIGSEGV), code 1\nfault address: 0x0\n", true},
        {"abort", "cause: signal 6 (SIGABRT)", false},
        {"qfatal", "cause: signal 6 (SIGABRT)", false},
        {"bad-alloc", "cause: memory allocation failed", false},
        {"uncaught", "cause: uncaught exception: probe", false},
        {"stack-overflow", "cause: signal 11 (SIGSEGV)", false},
        {"stack-overflow-worker", "cause: signal 11 (SIGSEGV)", true},
    };
    for (const FaultCase &c : cases) {
        SCOPED_TRACE(c.fault);
        QTemporaryDir work;
        ASSERT_TRUE(work.isValid());

        const ProbeRun run = runProbe(QString::fromLatin1(c.fault), work.path());
        EXPECT_TRUE(run.exitedNormally);
        EXPECT_EQ(run.exitCode, 1);

        // Only the finished report: no temporary file left beside it.
        const QDir crash(work.filePath(QStringLiteral("crash")));
        const QStringList entries = crash.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
        ASSERT_EQ(entries.size(), 1) << entries.join(QLatin1Char(' ')).toStdString();
        const QRegularExpressionMatch name = reportName.match(entries.front());
        ASSERT_TRUE(name.hasMatch()) << entries.front().toStdString();
        const QDateTime named = nameTime(name);
        EXPECT_GE(named, run.startedLocal) << entries.front().toStdString();
        EXPECT_LE(named, run.endedLocal) << entries.front().toStdString();

        QFile report(crash.filePath(entries.front()));
        ASSERT_TRUE(report.open(QIODevice::ReadOnly));
        const QString text = QString::fromLatin1(report.readAll());
        EXPECT_TRUE(text.startsWith(QStringLiteral("Orvel " ORVEL_VERSION " crash report\n")));
        EXPECT_TRUE(text.contains(QLatin1String(c.cause))) << text.toStdString();
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
    ASSERT_TRUE(work.isValid());
    const ProbeRun run = runProbe(QStringLiteral("none"), work.path());
    EXPECT_TRUE(run.exitedNormally);
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(QDir(work.path()).isEmpty());
}

TEST(CrashReport, UnwritableCrashDirectorySkipsTheReportButStillExitsWithOne)
{
    // A plain file where the directory should be: no directory can be made
    // and nothing opened inside it, even for root.
    QTemporaryDir work;
    ASSERT_TRUE(work.isValid());
    QFile blocker(work.filePath(QStringLiteral("crash")));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.write("not a directory");
    blocker.close();

    const ProbeRun run = runProbe(QStringLiteral("abort"), work.path());
    EXPECT_TRUE(run.exitedNormally);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(QDir(work.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList{QStringLiteral("crash")});
    ASSERT_TRUE(blocker.open(QIODevice::ReadOnly));
    EXPECT_EQ(blocker.readAll(), QByteArray("not a directory"));
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
        const CrashClockTime actual = crashClockTime(seconds);
        EXPECT_EQ(actual.year, expected.tm_year + 1900);
        EXPECT_EQ(actual.month, expected.tm_mon + 1);
        EXPECT_EQ(actual.day, expected.tm_mday);
        EXPECT_EQ(actual.hour, expected.tm_hour);
        EXPECT_EQ(actual.minute, expected.tm_min);
        EXPECT_EQ(actual.second, expected.tm_sec);
    }
}
