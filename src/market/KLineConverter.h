#pragma once

#include "KLineSource.h"

#include <QString>
#include <QStringList>

#include <atomic>
#include <functional>

// Writes every stock of a day-file or CSV folder into a folder of the
// program's own text files, one file per code, each replaced whole.
class KLineConverter {
public:
    struct Result {
        int converted = 0;
        QStringList skipped; // listed files that gave no days
        QString writeError;  // why the target could not be written; empty when it could
        bool cancelled = false;
    };
    // After each listed file: how many are done, of how many, and its code.
    using Progress = std::function<void(int done, int total, const QString &code)>;

    KLineConverter(KLineSource source, QString targetDir);

    // Stops at the first file that cannot be written, or between files when
    // `cancel` is set.
    Result run(const Progress &progress = {}, const std::atomic<bool> *cancel = nullptr) const;

private:
    QString writeStock(const QString &code, const QByteArray &text) const;

    KLineSource m_source;
    QString m_targetDir;
};
