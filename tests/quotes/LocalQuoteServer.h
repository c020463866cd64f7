#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QMap>
#include <QString>
#include <QTcpServer>

#include <functional>
#include <vector>

class QTcpSocket;

// The QCoreApplication the network classes need; made once per process.
void ensureApplication();

// Runs the event loop until `done` holds or `timeoutMs` passed; true if done.
bool waitUntil(const std::function<bool()> &done, int timeoutMs = 10000);

// A tiny HTTP/1.1 server on 127.0.0.1 standing in for the quote service. It
// answers each GET by the market symbol at the head of its "param" value and
// remembers every request with its arrival time.
class LocalQuoteServer {
public:
    struct Reply {
        int status = 200;
        QByteArray body;
    };
    struct Request {
        QByteArray target; // path and query as sent
        qint64 arrivalMs;
    };

    LocalQuoteServer();
    ~LocalQuoteServer();

    // "http://127.0.0.1:PORT"
    QString host() const;
    // Unknown symbols get a 404.
    void setReply(const QString &symbol, const Reply &reply) { m_replies[symbol] = reply; }
    const std::vector<Request> &requests() const { return m_requests; }

    // A host on which nothing listens: connections to it are refused.
    static QString refusingHost();

private:
    void serve(QTcpSocket *socket);
    Reply replyFor(const QByteArray &target) const;

    QTcpServer m_server;
    QElapsedTimer m_clock;
    QMap<QString, Reply> m_replies;
    std::vector<Request> m_requests;
};

// One day of a hand-made series.
struct QuoteDay {
    QString date;
    double open, close, high, low, volume;
};

// `count` calm days from 2024-01-02 on, each opening at the previous close
// and closing 0.05 higher.
std::vector<QuoteDay> risingDays(int count);

// A reply as the service frames it: the day lists, quoted, inside its JSON.
QByteArray serviceReply(const QString &symbol, const std::vector<QuoteDay> &days);
