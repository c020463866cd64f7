#include "MessageLog.h"

#include <QDateTime>
#include <QFile>

#include "market/TextFile.h"

#include <cstdlib>

namespace MessageLog {
namespace {

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
    QFile log(QStringLiteral("output.txt"));
    if (!log.open(QIODevice::WriteOnly | QIODevice::Append))
        return;
    log.write(TextFile::encode(formatLine(type, message) + QLatin1Char('\n'), TextEncoding::Gbk));
}

void install() { qInstallMessageHandler(handler); }

} // namespace MessageLog
