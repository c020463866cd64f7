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
    // How a reply reaches the client; all but Whole are faults of a broken
    // or hostile service.
    enum class Delivery {
        Whole,           // with its length, then the connection closes
        CutShort,        // announces the whole length, closes after half
        ChunkedCutShort, // chunked, closes before the last chunk
        Unsized,         // no length: the body runs until the connection closes
        Drip,            // one byte every kDripMs
        Stall,           // half the body, then silence with the connection open
    };
    static constexpr int kDripMs = 100;

    struct Reply {
        Reply(int status = 200, const QByteArray &body = {}, Delivery delivery = Delivery::Whole,
              const QByteArray &headers = {})
            : status(status), body(body), delivery(delivery), headers(headers)
        {
        }
        int status;
        QByteArray body;
        Delivery delivery;
        QByteArray headers; // extra header lines, each ending in "\r\n"
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
    static void deliver(QTcpSocket *socket, const Reply &reply);
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
