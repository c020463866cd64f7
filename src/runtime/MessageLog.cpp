#include "MessageLog.h"

#include <QDateTime>
#include <QFile>

#include "market/TextFile.h"

#include <cstdio>
#include <cstdlib>
#include <sys/stat.h>

namespace MessageLog {
namespace {

const char kLogName[] = "output.txt";
const char kPreviousLogName[] = "output.txt.1";

QString typeText(QtMsgType type, const QString &message)
{
    switch (type) {
    case QtDebugMsg: return QStringLiteral("Debug: %1").arg(message);
    case QtWarningMsg: return QStringLiteral("Warning: %1").arg(message);
    case QtCriticalMsg: return QStringLiteral("Critical: %1").arg(message);
    case QtFatalMsg: return QStringLiteral("Fatal: %1").arg(message);
    default: return {};
    }
}

// The log grows with every run; past this size it starts afresh, keeping the
// previous one as "output.txt.1".
constexpr qint64 kLargestLog = qint64(10) << 20;

// Moves a full log aside. Lock-free: only the writer whose open file is still
// the one under the log's name moves it; another writer that raced it keeps
// writing its line to the moved file.
void rotateIfFull(const QFile &log)
{
    struct stat opened;
    struct stat named;
    if (::fstat(log.handle(), &opened) != 0 || opened.st_size < kLargestLog)
        return;
    if (::stat(kLogName, &named) == 0 && named.st_ino == opened.st_ino && named.st_dev == opened.st_dev)
        ::rename(kLogName, kPreviousLogName);
}

} // namespace

QString formatLine(QtMsgType type, const QString &message)
{
    const QDateTime now = QDateTime::currentDateTime();
    return now.toString(QStringLiteral("yyyy-MM-dd")) + QLatin1Char(' ') +
           now.time().toString(QStringLiteral("HH:mm:ss")) + QLatin1Char(' ') + typeText(type, message);
}

void handler(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtFatalMsg)
        std::abort(); // the crash handler leaves a report; the log gets nothing
    // Opened and closed per message: lines from the worker and the interface
    // thread may interleave, but each is written whole.
    QFile log(QString::fromLatin1(kLogName));
    if (!log.open(QIODevice::WriteOnly | QIODevice::Append))
        return;
    rotateIfFull(log);
    if (!log.exists()) {
        log.close();
        if (!log.open(QIODevice::WriteOnly | QIODevice::Append))
            return;
    }
    log.write(TextFile::encode(formatLine(type, message) + QLatin1Char('\n'), TextEncoding::Gbk));
}

void install() { qInstallMessageHandler(handler); }

} // namespace MessageLog
