#pragma once

#include <QString>
#include <QtGlobal>

// Every debug, warning and critical message is appended to "output.txt" in the
// working directory as one dated line; a fatal message aborts before writing.
namespace MessageLog {

QString formatLine(QtMsgType type, const QString &message);
void handler(QtMsgType type, const QMessageLogContext &context, const QString &message);
void install();

} // namespace MessageLog
