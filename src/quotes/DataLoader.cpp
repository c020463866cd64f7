#include "DataLoader.h"

#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>
#include <QUrl>

namespace {

// A service that accepts the connection and then stays silent would stop the
// queue for good; after this long without data the request counts as failed.
constexpr int kTransferTimeoutMs = 30000;

} // namespace

DataLoader::DataLoader(QObject *parent) : QObject(parent) {}

DataLoader::~DataLoader()
{
    // The reply belongs to the manager, which goes with us; its signals must
    // not reach a half-destroyed loader.
    if (m_reply)
        m_reply->disconnect(this);
}

void DataLoader::setUrls(const QStringList &urls, const QStringList &tags)
{
    m_urls = urls;
    m_tags = tags;
}

void DataLoader::setHistoryInterface(std::unique_ptr<StockInterface> history)
{
    m_history = std::move(history);
}

void DataLoader::get(const QString &url)
{
    QNetworkRequest request{QUrl(url)};
    request.setTransferTimeout(kTransferTimeoutMs);
    m_body.clear();
    m_reply = m_network.get(request);
    connect(m_reply, &QNetworkReply::downloadProgress, this, &DataLoader::downloadProgress);
    connect(m_reply, &QNetworkReply::finished, this, &DataLoader::downloadFinished);
    connect(m_reply, &QNetworkReply::readyRead, this, &DataLoader::downloadReadyRead);
    emit requestStarted(url, m_currentTag);
}

// Replies are a few dozen kilobytes at most; there is nothing to show per byte.
void DataLoader::downloadProgress(qint64, qint64) {}

void DataLoader::downloadReadyRead()
{
    if (m_reply)
        m_body += m_reply->readAll();
}

void DataLoader::downloadFinished()
{
    QNetworkReply *reply = m_reply;
    if (!reply)
        return;
    m_reply = nullptr;
    if (reply->error() != QNetworkReply::NoError) {
        reportFailure(reply->errorString());
    } else {
        m_body += reply->readAll();
        publish(m_body);
    }
    m_body.clear();
    reply->deleteLater();
    QTimer::singleShot(kPauseMs, this, &DataLoader::startNextDownload);
}

void DataLoader::reportFailure(const QString &error)
{
    if (m_history)
        m_history->debugOutput(error);
    emit requestFailed(error, m_currentTag);
}

void DataLoader::publish(const QByteArray &body)
{
    emit bodyReceived(body, m_currentTag);
    if (!m_history)
        return;
    auto series = std::make_shared<StockSeries>(m_history->parse(body));
    if (!m_currentTag.isEmpty())
        series->code = m_currentTag;
    emit sendStock(std::move(series));
}
