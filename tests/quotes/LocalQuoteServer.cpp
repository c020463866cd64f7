#include "LocalQuoteServer.h"

#include <QCoreApplication>
#include <QDate>
#include <QTcpSocket>
#include <QTimer>
#include <QUrlQuery>

#include <memory>

namespace {

QByteArray reasonPhrase(int status)
{
    switch (status) {
    case 200: return "OK";
    case 302: return "Found";
    case 404: return "Not Found";
    case 500: return "Internal Server Error";
    default: return "Status";
    }
}

} // namespace

void ensureApplication()
{
    static int argc = 1;
    static char name[] = "quotes_tests";
    static char *argv[] = {name, nullptr};
    // Never destroyed: at exit the network classes' own globals may already
    // be gone, and tearing the application down after them crashes.
    if (!QCoreApplication::instance())
        new QCoreApplication(argc, argv);
}

bool waitUntil(const std::function<bool()> &done, int timeoutMs)
{
    QElapsedTimer clock;
    clock.start();
    while (!done()) {
        if (clock.elapsed() > timeoutMs)
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    }
    return true;
}

LocalQuoteServer::LocalQuoteServer()
{
    ensureApplication();
    m_clock.start();
    m_server.listen(QHostAddress::LocalHost);
    QObject::connect(&m_server, &QTcpServer::newConnection, [this] {
        while (QTcpSocket *socket = m_server.nextPendingConnection())
            serve(socket);
    });
}

LocalQuoteServer::~LocalQuoteServer() { m_server.close(); }

QString LocalQuoteServer::host() const
{
    return QStringLiteral("http://127.0.0.1:%1").arg(m_server.serverPort());
}

QString LocalQuoteServer::refusingHost()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    const quint16 port = probe.serverPort();
    probe.close();
    return QStringLiteral("http://127.0.0.1:%1").arg(port);
}

void LocalQuoteServer::serve(QTcpSocket *socket)
{
    QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    auto head = std::make_shared<QByteArray>();
    QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket, head] {
        *head += socket->readAll();
        if (!head->contains("\r\n\r\n"))
            return;
        const QByteArray target = head->left(head->indexOf("\r\n")).split(' ').value(1);
        head->clear();
        m_requests.push_back({target, m_clock.elapsed()});
        deliver(socket, replyFor(target));
    });
}

void LocalQuoteServer::deliver(QTcpSocket *socket, const Reply &reply)
{
    const QByteArray &body = reply.body;
    QByteArray head = "HTTP/1.1 " + QByteArray::number(reply.status) + ' ' + reasonPhrase(reply.status) +
                      "\r\nContent-Type: text/html; charset=GBK\r\nConnection: close\r\n" + reply.headers;
    if (reply.delivery == Delivery::ChunkedCutShort)
        head += "Transfer-Encoding: chunked\r\n";
    else if (reply.delivery != Delivery::Unsized)
        head += "Content-Length: " + QByteArray::number(body.size()) + "\r\n";
    socket->write(head + "\r\n");
    switch (reply.delivery) {
    case Delivery::Whole:
    case Delivery::Unsized: socket->write(body); break;
    case Delivery::CutShort: socket->write(body.left(body.size() / 2)); break;
    case Delivery::ChunkedCutShort:
        socket->write(QByteArray::number(body.size(), 16) + "\r\n" + body + "\r\n"); // no "0" chunk
        break;
    case Delivery::Stall: socket->write(body.left(body.size() / 2)); return;
    case Delivery::Drip: {
        auto *timer = new QTimer(socket);
        QObject::connect(timer, &QTimer::timeout, socket, [socket, body, sent = qsizetype(0)]() mutable {
            if (sent < body.size())
                socket->write(body.mid(sent++, 1));
        });
        timer->start(kDripMs);
        return;
    }
    }
    socket->disconnectFromHost();
}

LocalQuoteServer::Reply LocalQuoteServer::replyFor(const QByteArray &target) const
{
    const QUrlQuery query(QString::fromLatin1(target.mid(target.indexOf('?') + 1)));
    const QString symbol = query.queryItemValue(QStringLiteral("param")).section(QLatin1Char(','), 0, 0);
    return m_replies.value(symbol, Reply{404, "not found"});
}

std::vector<QuoteDay> risingDays(int count)
{
    std::vector<QuoteDay> days;
    const QDate first(2024, 1, 2);
    double close = 10.0;
    for (int i = 0; i < count; ++i) {
        const double open = close;
        close += 0.05;
        days.push_back(
            {first.addDays(i).toString(Qt::ISODate), open, close, close + 0.1, open - 0.1, 10000.0 + i});
    }
    return days;
}

QByteArray serviceReply(const QString &symbol, const std::vector<QuoteDay> &days)
{
    QByteArray rows;
    for (const QuoteDay &d : days) {
        if (!rows.isEmpty())
            rows += ',';
        rows += QStringLiteral("[\"%1\",\"%2\",\"%3\",\"%4\",\"%5\",\"%6\"]")
                    .arg(d.date)
                    .arg(d.open, 0, 'f', 3)
                    .arg(d.close, 0, 'f', 3)
                    .arg(d.high, 0, 'f', 3)
                    .arg(d.low, 0, 'f', 3)
                    .arg(d.volume, 0, 'f', 3)
                    .toLatin1();
    }
    return "{\"code\":0,\"msg\":\"\",\"data\":{\"" + symbol.toLatin1() + "\":{\"hfqday\":[" + rows +
           "],\"qt\":{\"market\":[\"2024-03-01 15:00:00|sh_close\"]},\"prec\":\"9.95\",\"version\":\"12\"}}}";
}
