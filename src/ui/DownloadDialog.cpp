#include "DownloadDialog.h"

#include "market/TextFile.h"
#include "quotes/KLineDownloader.h"
#include "quotes/StockCodeList.h"
#include "script/StrategyConfig.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

QString configuredDataDir()
{
    StrategyConfig config;
    config.loadConfigFile();
    return config.kDir;
}

DownloadDialog::DownloadDialog(QWidget *parent)
    : QDialog(parent), m_downloader(new KLineDownloader(this)), m_codes(new QPlainTextEdit(this)),
      m_adjustment(new QComboBox(this)), m_period(new QComboBox(this)), m_target(new QLabel(this)),
      m_progress(new QProgressBar(this)), m_log(new QPlainTextEdit(this)),
      m_fromFile(new QPushButton(QStringLiteral("从文件读取代码"), this)),
      m_start(new QPushButton(QStringLiteral("开始下载"), this)),
      m_cancel(new QPushButton(QStringLiteral("取消"), this))
{
    setWindowTitle(QStringLiteral("下载数据"));
    m_codes->setPlaceholderText(QStringLiteral("六位股票代码, 以空格、逗号或换行分隔"));
    m_log->setReadOnly(true);
    m_progress->setValue(0);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->addButton(m_start, QDialogButtonBox::ActionRole);
    buttons->addButton(m_cancel, QDialogButtonBox::ActionRole);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_codes);
    layout->addWidget(createOptions());
    layout->addWidget(m_progress);
    layout->addWidget(m_log);
    layout->addWidget(buttons);

    connect(m_fromFile, &QPushButton::clicked, this, &DownloadDialog::loadCodesFile);
    connect(m_start, &QPushButton::clicked, this, &DownloadDialog::startDownload);
    connect(m_cancel, &QPushButton::clicked, this, &DownloadDialog::cancelDownload);
    connect(buttons, &QDialogButtonBox::rejected, this, &DownloadDialog::reject);
    connectDownloader();
    setRunning(false);
    resize(520, 480);
}

QWidget *DownloadDialog::createOptions()
{
    m_adjustment->addItem(QStringLiteral("后复权"), QStringLiteral("hfq"));
    m_adjustment->addItem(QStringLiteral("前复权"), QStringLiteral("qfq"));
    m_adjustment->addItem(QStringLiteral("不复权"), QStringLiteral("bfq"));
    m_period->addItem(QStringLiteral("日线"), QStringLiteral("day"));
    m_period->addItem(QStringLiteral("周线"), QStringLiteral("week"));
    m_period->addItem(QStringLiteral("月线"), QStringLiteral("month"));
    m_target->setText(configuredDataDir());

    auto *options = new QWidget(this);
    auto *form = new QFormLayout(options);
    form->setContentsMargins(0, 0, 0, 0);
    form->addRow(QString(), m_fromFile);
    form->addRow(QStringLiteral("复权方式"), m_adjustment);
    form->addRow(QStringLiteral("K线周期"), m_period);
    form->addRow(QStringLiteral("保存到"), m_target);
    return options;
}

void DownloadDialog::connectDownloader()
{
    connect(m_downloader, &KLineDownloader::codeRefused, this, [this](const QString &text) {
        appendLog(QStringLiteral("%1: 不是六位数字的股票代码, 已跳过").arg(text));
    });
    connect(m_downloader, &KLineDownloader::codeStarted, this,
            [this](int position, int count, const QString &code) {
                m_progress->setMaximum(count);
                appendLog(QStringLiteral("[%1/%2] %3 下载中…").arg(position).arg(count).arg(code));
            });
    connect(m_downloader, &KLineDownloader::codeSaved, this, [this](const QString &code, int bars) {
        m_progress->setValue(++m_done);
        appendLog(QStringLiteral("%1: 已保存 %2 条").arg(code).arg(bars));
    });
    connect(m_downloader, &KLineDownloader::codeFailed, this,
            [this](const QString &code, const QString &reason) {
                m_progress->setValue(++m_done);
                appendLog(QStringLiteral("%1: 失败, %2").arg(code, reason));
            });
    connect(m_downloader, &KLineDownloader::finished, this, [this](int saved, int failed) {
        const QString outcome = m_cancelled ? QStringLiteral("已取消") : QStringLiteral("完成");
        appendLog(QStringLiteral("%1: %2 个已保存, %3 个失败").arg(outcome).arg(saved).arg(failed));
        setRunning(false);
    });
}

void DownloadDialog::startDownload()
{
    const QStringList codes = StockCodeList::split(m_codes->toPlainText());
    if (codes.isEmpty()) {
        appendLog(QStringLiteral("请先输入股票代码"));
        return;
    }
    KLineDownloader::Options options;
    options.dataDir = configuredDataDir(); // the editor may have changed it since we opened
    options.adjustment = m_adjustment->currentData().toString();
    options.period = m_period->currentData().toString();
    m_target->setText(options.dataDir);
    m_done = 0;
    m_cancelled = false;
    m_progress->setMaximum(1);
    m_progress->setValue(0);
    setRunning(true);
    const QString problem = m_downloader->start(codes, options);
    if (!problem.isEmpty()) {
        appendLog(problem);
        setRunning(false);
    }
}

void DownloadDialog::cancelDownload()
{
    if (!m_downloader->isRunning())
        return;
    appendLog(QStringLiteral("正在取消…"));
    m_cancel->setEnabled(false);
    m_cancelled = true;
    m_downloader->cancel();
}

void DownloadDialog::loadCodesFile()
{
    const QString path = QFileDialog::getOpenFileName(this, QStringLiteral("从文件读取代码"));
    if (path.isEmpty())
        return;
    const QStringList codes = StockCodeList::split(readTextFile(path));
    if (codes.isEmpty()) {
        appendLog(QStringLiteral("%1: 没有读到股票代码").arg(path));
        return;
    }
    QString text = m_codes->toPlainText().trimmed();
    m_codes->setPlainText(text.isEmpty() ? codes.join(QLatin1Char('\n'))
                                         : text + QLatin1Char('\n') + codes.join(QLatin1Char('\n')));
}

// Closing while a download runs stops it first; nothing more is requested.
void DownloadDialog::reject()
{
    cancelDownload();
    QDialog::reject();
}

void DownloadDialog::setRunning(bool running)
{
    m_codes->setReadOnly(running);
    m_fromFile->setEnabled(!running);
    m_adjustment->setEnabled(!running);
    m_period->setEnabled(!running);
    m_start->setEnabled(!running);
    m_cancel->setEnabled(running);
}

void DownloadDialog::appendLog(const QString &line) { m_log->appendPlainText(line); }
