#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

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
