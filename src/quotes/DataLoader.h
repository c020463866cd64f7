#pragma once

#include "StockInterface.h"

#include <QNetworkAccessManager>
#include <QObject>
#include <QStringList>

#include <memory>

class QNetworkReply;

// Parsed bars travel between objects (and threads) without copying; the dates
// point into the series' own text, so it is handed on whole.
using SharedStockSeries = std::shared_ptr<const StockSeries>;

// Fetches a list of URLs one at a time and hands each reply body to the
// interfaces that are set. Exactly one request is in flight; the next starts
// a fixed pause after the previous one ended, successful or not, so the
// service never sees a burst. There is no retry.
class DataLoader : public QObject {
    Q_OBJECT
public:
    static constexpr int kPauseMs = 1500;

    explicit DataLoader(QObject *parent = nullptr);
    ~DataLoader() override;

    // `tags` (optional) run parallel to `urls`; each request's tag names
    // what it is for, usually the stock code.
    void setUrls(const QStringList &urls, const QStringList &tags = {});
    // The interface that parses history bars; nullptr for none.
    void setHistoryInterface(std::unique_ptr<StockInterface> history);

    QStringList pendingUrls() const { return m_urls; }
    QString currentTag() const { return m_currentTag; }
    bool isRequestInFlight() const { return m_reply != nullptr; }

public slots:
    virtual void startNextDownload() = 0;
    void downloadProgress(qint64 bytesReceived, qint64 bytesTotal);
    void downloadFinished();
    void downloadReadyRead();

signals:
    void sendStock(SharedStockSeries stocks);
    void sendOK();

    // How each request goes, for front ends that report per code.
    void requestStarted(const QString &url, const QString &tag);
    void requestFailed(const QString &error, const QString &tag);
    // The body as received, emitted just before the interfaces' results.
    void bodyReceived(const QByteArray &body, const QString &tag);

protected:
    void get(const QString &url);

    QStringList m_urls;
    QStringList m_tags;
    QString m_currentTag;

private:
    void reportFailure(const QString &error);
    void publish(const QByteArray &body);

    QNetworkAccessManager m_network;
    QNetworkReply *m_reply = nullptr;
    QByteArray m_body;
    std::unique_ptr<StockInterface> m_history;
};
