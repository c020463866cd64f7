#include "KLineDownloader.h"

#include "IterateDataLoader.h"
#include "StockCodeList.h"
#include "StockQQHistoryInterface.h"
#include "market/SafeFile.h"

#include <QDir>

KLineDownloader::KLineDownloader(QObject *parent) : QObject(parent) {}

KLineDownloader::~KLineDownloader() { delete m_loader; }

void KLineDownloader::start(const QStringList &codes, const Options &options)
{
    if (isRunning())
        return;
    m_saved = m_failed = m_position = 0;
    m_cancelRequested = false;
    m_dataDir = options.dataDir;

    QStringList accepted;
    for (const QString &code : codes) {
        if (StockCodeList::isStockCode(code)) {
            accepted.append(code);
        } else {
            ++m_failed;
            emit codeRefused(code);
        }
    }
    accepted.removeDuplicates();
    m_count = int(accepted.size());
    if (accepted.isEmpty()) {
        emit finished(m_saved, m_failed);
        return;
    }
    QDir().mkpath(m_dataDir); // a first download has no data directory yet

    auto history = std::make_unique<StockQQHistoryInterface>(options.host);
    history->setOption(StockQQHistoryInterface::AdjustmentOption, options.adjustment);
    history->setOption(StockQQHistoryInterface::PeriodOption, options.period);
    m_loader = new IterateDataLoader(this);
    m_loader->setUrls(history->buildUrls(accepted), accepted);
    m_loader->setHistoryInterface(std::move(history));
    connect(m_loader, &DataLoader::requestStarted, this, &KLineDownloader::onRequestStarted);
    connect(m_loader, &DataLoader::requestFailed, this, &KLineDownloader::onRequestFailed);
    connect(m_loader, &DataLoader::bodyReceived, this, [this](const QByteArray &body) { m_body = body; });
    connect(m_loader, &DataLoader::sendStock, this, &KLineDownloader::onStock);
    connect(m_loader, &DataLoader::sendOK, this, &KLineDownloader::finish);
    m_loader->startNextDownload();
}

void KLineDownloader::cancel()
{
    m_cancelRequested = true;
    if (m_loader && !m_loader->isRequestInFlight())
        finish();
}

void KLineDownloader::onRequestStarted(const QString &, const QString &code)
{
    emit codeStarted(++m_position, m_count, code);
}

void KLineDownloader::onRequestFailed(const QString &error, const QString &code)
{
    fail(code, error);
    afterReply();
}

void KLineDownloader::onStock(const SharedStockSeries &series)
{
    const QString &code = series->code;
    if (series->size() < kMinimumBars) {
        fail(code, QStringLiteral("数据不足: %1 条, 至少需要 %2 条").arg(series->size()).arg(kMinimumBars));
    } else {
        const QString error =
            SafeFile::replace(m_dataDir + QLatin1Char('/') + code, m_body, SymlinkRule::Refuse);
        if (error.isEmpty()) {
            ++m_saved;
            emit codeSaved(code, series->size());
        } else {
            fail(code, QStringLiteral("无法写入文件: %1").arg(error));
        }
    }
    m_body.clear();
    afterReply();
}

void KLineDownloader::afterReply()
{
    if (m_cancelRequested)
        finish();
}

void KLineDownloader::fail(const QString &code, const QString &reason)
{
    ++m_failed;
    emit codeFailed(code, reason);
}

void KLineDownloader::finish()
{
    if (m_loader) {
        // We may be inside one of the loader's own signals.
        m_loader->disconnect(this);
        m_loader->deleteLater();
        m_loader = nullptr;
    }
    emit finished(m_saved, m_failed);
}
