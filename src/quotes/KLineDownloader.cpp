#include "KLineDownloader.h"

#include "StockCodeList.h"
#include "market/KLineCheck.h"
#include "market/SafeFile.h"

#include <QDebug>
#include <QDir>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QUrl>

#include <utility>

namespace {

QString seconds(int ms) { return QString::number(ms / 1000.0); }

// The first thing that makes a reply's days unfit for a backtest (days out
// of order, prices at or below zero, high below low, control bytes, too few
// days), or empty.
QString daysProblem(const KLineCheck &check)
{
    if (check.problems.empty())
        return {};
    const KLineFinding &first = check.problems.front();
    const QString where =
        first.firstDate.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(first.firstDate);
    return QStringLiteral("数据有误: %1%2").arg(problemText(first.problem), where);
}

} // namespace

KLineDownloader::KLineDownloader(QObject *parent) : QObject(parent)
{
    m_pause.setSingleShot(true);
    // A coarse timer may fire 5 % early; the service must never see requests
    // closer together than the pause.
    m_pause.setTimerType(Qt::PreciseTimer);
    m_deadline.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, &KLineDownloader::requestNext);
    connect(&m_deadline, &QTimer::timeout, this, [this] {
        abortReply(QStringLiteral("%1 秒内没有下载完, 已中止").arg(seconds(m_deadline.interval())));
    });
}

KLineDownloader::~KLineDownloader()
{
    // The reply goes with the manager; its signals must not reach a
    // half-destroyed downloader.
    if (m_reply)
        m_reply->disconnect(this);
}

QString KLineDownloader::start(const QStringList &codes, const Options &options)
{
    if (m_running)
        return {};
    m_saved = m_failed = m_unwritten = m_position = 0;
    m_cancelled = false;
    m_queue.clear();
    for (const QString &code : codes) {
        if (StockCodeList::isStockCode(code)) {
            m_queue.append(code);
        } else {
            ++m_failed;
            emit codeRefused(code);
        }
    }
    m_queue.removeDuplicates();
    m_count = int(m_queue.size());
    if (m_queue.isEmpty()) {
        emit finished(m_saved, m_failed);
        return {};
    }
    // A first download has no data directory yet.
    if (!QDir().mkpath(options.dataDir))
        return QStringLiteral("无法建立数据目录 %1").arg(options.dataDir);

    m_dataDir = options.dataDir;
    m_history.emplace(options.host);
    m_history->setOption(StockQQHistoryInterface::AdjustmentOption, options.adjustment);
    m_history->setOption(StockQQHistoryInterface::PeriodOption, options.period);
    m_pause.setInterval(options.pauseMs);
    m_deadline.setInterval(options.deadlineMs);
    m_silenceMs = options.silenceMs;
    m_running = true;
    requestNext();
    return {};
}

void KLineDownloader::cancel()
{
    if (!m_running)
        return;
    m_cancelled = true;
    if (m_reply)
        abortReply(QStringLiteral("已取消"));
    else if (m_pause.isActive())
        finish();
    // Otherwise a reply is being handled and ends the run when it is done.
}

void KLineDownloader::requestNext()
{
    m_code = m_queue.takeFirst();
    QNetworkRequest request{QUrl(m_history->buildUrls({m_code}).constFirst())};
    request.setTransferTimeout(m_silenceMs);
    // The service may move a request within itself, never to another host.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::SameOriginRedirectPolicy);
    m_body.clear();
    m_reply = m_network.get(request);
    connect(m_reply, &QNetworkReply::readyRead, this, &KLineDownloader::onReadyRead);
    connect(m_reply, &QNetworkReply::finished, this, &KLineDownloader::onReplyFinished);
    m_deadline.start();
    emit codeStarted(++m_position, m_count, m_code);
}

// The limit holds while the body streams in: an endless reply must not take
// the memory first and be refused after.
void KLineDownloader::onReadyRead()
{
    if (m_body.size() + m_reply->bytesAvailable() > kMaxReplyBytes) {
        abortReply(QStringLiteral("回复超过 %1 MB, 已中止").arg(kMaxReplyBytes >> 20));
        return;
    }
    m_body += m_reply->readAll();
}

void KLineDownloader::onReplyFinished()
{
    if (m_reply->bytesAvailable() > 0)
        onReadyRead();
    if (!m_reply) // refused as too large
        return;
    QNetworkReply *reply = std::exchange(m_reply, nullptr);
    m_deadline.stop();
    reply->deleteLater();
    const QString failure = failureOf(reply);
    if (failure.isEmpty())
        keep(m_body);
    else
        fail(failure);
    afterRequest();
}

void KLineDownloader::abortReply(const QString &reason)
{
    QNetworkReply *reply = std::exchange(m_reply, nullptr);
    if (!reply)
        return;
    reply->disconnect(this);
    reply->abort();
    reply->deleteLater();
    m_deadline.stop();
    fail(reason);
    afterRequest();
}

QString KLineDownloader::failureOf(QNetworkReply *reply) const
{
    switch (reply->error()) {
    case QNetworkReply::NoError: break;
    case QNetworkReply::OperationCanceledError:
        return QStringLiteral("%1 秒没有收到数据, 已中止").arg(seconds(m_silenceMs));
    case QNetworkReply::InsecureRedirectError: return QStringLiteral("服务器转向别的网站, 已拒绝");
    // Qt reports a body that ends before its announced length, or a chunked
    // one without its last chunk, as closed by the host.
    case QNetworkReply::RemoteHostClosedError: return QStringLiteral("连接中断, 回复不完整");
    // Qt's own texts name the whole request address; the user needs the cause.
    case QNetworkReply::ConnectionRefusedError: return QStringLiteral("网络错误: 服务器拒绝连接");
    case QNetworkReply::HostNotFoundError: return QStringLiteral("网络错误: 找不到服务器");
    case QNetworkReply::TimeoutError: return QStringLiteral("网络错误: 连接超时");
    default: break;
    }
    if (reply->error() != QNetworkReply::NoError) {
        const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
        if (status.isValid())
            return QStringLiteral("网络错误: 服务器回复 %1 %2")
                .arg(status.toInt())
                .arg(reply->attribute(QNetworkRequest::HttpReasonPhraseAttribute).toString());
        return QStringLiteral("网络错误: 代码 %1").arg(int(reply->error()));
    }
    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (status != 200)
        return QStringLiteral("服务器回复 %1").arg(status);
    return {};
}

void KLineDownloader::keep(const QByteArray &body)
{
    StockSeries series;
    series.text().assign(body.begin(), body.end());
    const KLineCheck check = checkKLineText(series);
    QString problem = StockQQHistoryInterface::replyProblem(body, m_code);
    if (problem.isEmpty())
        problem = daysProblem(check);
    if (!problem.isEmpty()) {
        fail(problem);
        return;
    }
    // A stock file is ours alone: a symlink planted in the data directory must
    // not lead a download to overwrite a file elsewhere.
    const QString path = m_dataDir + QLatin1Char('/') + m_code;
    problem = SafeFile::replace(path, body, SymlinkRule::Refuse);
    if (!problem.isEmpty()) {
        ++m_unwritten;
        fail(QStringLiteral("无法写入 %1: %2").arg(path, problem));
        return;
    }
    ++m_saved;
    emit codeSaved(m_code, check.days);
}

void KLineDownloader::fail(const QString &reason)
{
    ++m_failed;
    // The log keeps why, for when the window or the terminal is gone.
    qDebug().noquote() << QStringLiteral("下载 %1 失败: %2").arg(m_code, reason);
    emit codeFailed(m_code, reason);
}

void KLineDownloader::afterRequest()
{
    m_body.clear();
    if (m_cancelled || m_queue.isEmpty())
        finish();
    else
        m_pause.start();
}

void KLineDownloader::finish()
{
    m_running = false;
    m_pause.stop();
    emit finished(m_saved, m_failed);
}
