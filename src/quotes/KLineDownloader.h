#pragma once

#include "StockQQHistoryInterface.h"

#include <QNetworkAccessManager>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include <optional>

class QNetworkReply;

// Fetches the history K-lines of a list of codes and keeps each reply as that
// code's file in the data directory, the work behind both front ends' download
// commands. One request is in flight at a time, and the next starts a pause
// after the previous one ended, successful or not, so the service never sees
// a burst; there is no retry. A file is replaced only by a whole reply that a
// backtest can use, so a failed code keeps whatever file it had.
class KLineDownloader : public QObject {
    Q_OBJECT
public:
    // Real replies are a few hundred kilobytes; anything this large is not one.
    static constexpr qint64 kMaxReplyBytes = 32 * 1024 * 1024;

    struct Options {
        QString dataDir = QStringLiteral("data");
        QString adjustment = QStringLiteral("hfq");
        QString period = QStringLiteral("day");
        QString host; // empty: the history interface's default
        int pauseMs = 1500;
        // A request fails after this long in all, however slowly data keeps
        // coming, or after silenceMs without any.
        int deadlineMs = 120000;
        int silenceMs = 30000;
    };

    explicit KLineDownloader(QObject *parent = nullptr);
    ~KLineDownloader() override;

    // Refuses what is not a stock code at once (codeRefused), then fetches the
    // rest in order. Returns why nothing could be fetched at all (the data
    // directory cannot be made), empty otherwise. finished() may come before
    // this returns when nothing is left to fetch.
    QString start(const QStringList &codes, const Options &options);
    // Aborts the request in flight (its code fails) and requests nothing more.
    void cancel();
    bool isRunning() const { return m_running; }
    // Failed codes whose reply was good but could not be written.
    int unwritten() const { return m_unwritten; }

signals:
    // Refused codes count as failed; they never reach the network or a path.
    void codeRefused(const QString &text);
    void codeStarted(int position, int count, const QString &code);
    void codeSaved(const QString &code, int days);
    void codeFailed(const QString &code, const QString &reason);
    void finished(int saved, int failed);

private:
    void requestNext();
    void onReadyRead();
    void onReplyFinished();
    void abortReply(const QString &reason);
    QString failureOf(QNetworkReply *reply) const;
    void keep(const QByteArray &body);
    void fail(const QString &reason);
    void afterRequest();
    void finish();

    QNetworkAccessManager m_network;
    QTimer m_pause;
    QTimer m_deadline;
    std::optional<StockQQHistoryInterface> m_history;
    QNetworkReply *m_reply = nullptr;
    QByteArray m_body;
    QStringList m_queue;
    QString m_code;
    QString m_dataDir;
    int m_silenceMs = 0;
    int m_position = 0;
    int m_count = 0;
    int m_saved = 0;
    int m_failed = 0;
    int m_unwritten = 0;
    bool m_running = false;
    bool m_cancelled = false;
};
