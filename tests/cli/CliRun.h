#pragma once

#include "TestSupport.h"

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

// One finished run of orvel-cli.
struct CliRun {
    int exitCode = -1;
    QString out;
    QString err;
};

inline CliRun runCli(const QStringList &arguments, const QString &workingDirectory = {})
{
    QProcess process;
    if (!workingDirectory.isEmpty())
        process.setWorkingDirectory(workingDirectory);
    process.start(QStringLiteral(ORVEL_CLI), arguments);
    process.waitForFinished(300000);
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

// The bundled market and the script a new user starts from.
inline const QString kSampleData = QStringLiteral(ORVEL_SOURCE_DIR "/data");
inline const QString kDefaultScript = QStringLiteral(ORVEL_SOURCE_DIR "/src/resources/default.script");

// `text` as the script `name` in `dir`; its path.
inline QString writeScript(const QTemporaryDir &dir, const QByteArray &text,
                           const QString &name = QStringLiteral("s.script"))
{
    const QString path = dir.filePath(name);
    writeTestFile(path, text);
    return path;
}
