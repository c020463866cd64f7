#pragma once

#include "DataLoader.h"

#include <QObject>
#include <QStringList>

class IterateDataLoader;

// Fetches the history K-lines of a list of codes and keeps each reply as that
// code's file in the data directory, the work behind both front ends' download
// commands. A file is replaced only by a reply that a backtest can use, and
// only whole, so a failed code keeps whatever file it had.
class KLineDownloader : public QObject {
    Q_OBJECT
public:
    // A series of fewer bars is skipped by the backtest; saving it would only
    // overwrite something better.
    static constexpr int kMinimumBars = 7;

    struct Options {
        QString dataDir = QStringLiteral("data");
        QString adjustment = QStringLiteral("hfq");
        QString period = QStringLiteral("day");
        QString host; // empty: the history interface's default
    };

    explicit KLineDownloader(QObject *parent = nullptr);
    ~KLineDownloader() override;

    // Refuses what is not a stock code at once (codeRefused), then fetches the
    // rest in order. finished() may come before this returns when nothing is
    // left to fetch.
    void start(const QStringList &codes, const Options &options);
    // Nothing more is requested; a request in flight is still completed.
    void cancel();
    bool isRunning() const { return m_loader != nullptr; }

signals:
    // Refused codes count as failed; they never reach the network or a path.
    void codeRefused(const QString &text);
    void codeStarted(int position, int count, const QString &code);
    void codeSaved(const QString &code, int bars);
    void codeFailed(const QString &code, const QString &reason);
    void finished(int saved, int failed);

private:
    void onRequestStarted(const QString &url, const QString &code);
    void onRequestFailed(const QString &error, const QString &code);
    void onStock(const SharedStockSeries &series);
    void afterReply();
    void fail(const QString &code, const QString &reason);
    void finish();

    IterateDataLoader *m_loader = nullptr;
    QString m_dataDir;
    QByteArray m_body;
    int m_position = 0;
    int m_count = 0;
    int m_saved = 0;
    int m_failed = 0;
    bool m_cancelRequested = false;
};
