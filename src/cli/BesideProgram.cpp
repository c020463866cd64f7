#include "BesideProgram.h"

#include <QFileInfo>

QString besideProgram(const QString &library)
{
    const QString program = QFileInfo(QStringLiteral("/proc/self/exe")).symLinkTarget();
    return QFileInfo(program).path() + QLatin1Char('/') + library;
}
