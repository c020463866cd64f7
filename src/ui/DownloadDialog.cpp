#include "DownloadDialog.h"

#include "market/TextFile.h"
#include "quotes/KLineDownloader.h"
#include "quotes/StockCodeList.h"
#include "quotes/StockQQHistoryInterface.h"
#include "script/StrategyConfig.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
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
      m_chooseTarget(new QPushButton(QStringLiteral("选择…"), this)),
      m_start(new QPushButton(QStringLiteral("开始下载"), this)),
      m_cancel(new QPushButton(QStringLiteral("取消"), this))
{
    setWindowTitle(QStringLiteral("下载数据"));
    m_codes->setPlaceholderText(
        QStringLiteral("六位股票代码（也可写 sh600000、000001.SZ）, 以空格、逗号或换行分隔"));
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
    connect(m_chooseTarget, &QPushButton::clicked, this, &DownloadDialog::chooseTargetDir);
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
    m_target->setObjectName(QStringLiteral("targetDir"));
    m_target->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_target->setWordWrap(true);
    m_target->setText(targetDir());
    auto *target = new QWidget(this);
    auto *targetRow = new QHBoxLayout(target);
    targetRow->setContentsMargins(0, 0, 0, 0);
    targetRow->addWidget(m_target, 1);
    targetRow->addWidget(m_chooseTarget);

    auto *options = new QWidget(this);
    auto *form = new QFormLayout(options);
    form->setContentsMargins(0, 0, 0, 0);
    form->addRow(QString(), m_fromFile);
    form->addRow(QStringLiteral("复权方式"), m_adjustment);
    form->addRow(QStringLiteral("K线周期"), m_period);
    form->addRow(QStringLiteral("保存到"), target);
    return options;
}

void DownloadDialog::connectDownloader()
{
    connect(m_downloader, &KLineDownloader::codeRefused, this, [this](const QString &text) {
        ++m_refused;
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
        // Codes that are not codes were never asked for: they are not failed downloads.
        QString line =
            QStringLiteral("%1: %2 个已保存, %3 个失败").arg(outcome).arg(saved).arg(failed - m_refused);
        if (m_refused > 0)
            line += QStringLiteral(", %1 个代码无效").arg(m_refused);
        appendLog(line);
        setRunning(false);
    });
}

void DownloadDialog::startDownload()
{
    // Codes as quote sites write them ("sh600000", "600000.SH") are taken as their six digits.
    QStringList codes = StockCodeList::split(m_codes->toPlainText());
    for (QString &code : codes)
        code = StockCodeList::bareCode(code);
    if (codes.isEmpty()) {
        appendLog(QStringLiteral("请先输入股票代码"));
        return;
    }
    KLineDownloader::Options options;
    // The configured folder is read anew: the editor may have changed it since we opened.
    options.dataDir = m_chosenDir.isEmpty() ? configuredDataDir() : m_chosenDir;
    options.adjustment = m_adjustment->currentData().toString();
    options.period = m_period->currentData().toString();
    m_target->setText(targetDir());
    if (!confirmAdjustment(codes, options.dataDir, options.adjustment))
        return;
    m_done = 0;
    m_refused = 0;
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

QString DownloadDialog::targetDir() const
{
    return QDir::toNativeSeparators(
        QDir(m_chosenDir.isEmpty() ? configuredDataDir() : m_chosenDir).absolutePath());
}

void DownloadDialog::setTargetDir(const QString &dir)
{
    m_chosenDir = dir;
    m_target->setText(targetDir());
}

void DownloadDialog::chooseTargetDir()
{
    const QString dir = QFileDialog::getExistingDirectory(this, QStringLiteral("保存到"), targetDir());
    if (!dir.isEmpty())
        setTargetDir(dir);
}

namespace {

QString adjustmentName(const QString &adjustment)
{
    if (adjustment == QLatin1String("hfq"))
        return QStringLiteral("后复权");
    if (adjustment == QLatin1String("qfq"))
        return QStringLiteral("前复权");
    return QStringLiteral("不复权");
}

} // namespace

// Prices of one adjustment beside another's make every ex-rights day look
// like a jump of a quarter or more, so replacing files of another kind is
// asked first.
bool DownloadDialog::confirmAdjustment(const QStringList &codes, const QString &dir,
                                       const QString &adjustment)
{
    int others = 0;
    QString theirs;
    for (const QString &code : codes) {
        QFile file(QDir(dir).filePath(code));
        if (!StockCodeList::isStockCode(code) || !QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly))
            continue;
        const QString found = StockQQHistoryInterface::adjustmentOfReply(file.read(4096));
        if (!found.isEmpty() && found != adjustment) {
            ++others;
            theirs = found;
        }
    }
    if (others == 0)
        return true;
    QMessageBox box(QMessageBox::Warning, QStringLiteral("下载数据"),
                    QStringLiteral("“%1”中已有%2个要替换的文件是%3数据，这次下载的是%4数据。\n"
                                   "两种复权方式混在一个文件夹里，每个除权日都会像一次约25%的跳空，"
                                   "回测结果不再可信。仍然下载吗？")
                        .arg(QDir::toNativeSeparators(QDir(dir).absolutePath()))
                        .arg(others)
                        .arg(adjustmentName(theirs), adjustmentName(adjustment)),
                    QMessageBox::NoButton, this);
    QPushButton *go = box.addButton(QStringLiteral("仍然下载"), QMessageBox::AcceptRole);
    box.setDefaultButton(box.addButton(QStringLiteral("取消"), QMessageBox::RejectRole));
    box.exec();
    if (box.clickedButton() == go)
        return true;
    appendLog(QStringLiteral("没有下载: 目标文件夹中的文件是%1数据").arg(adjustmentName(theirs)));
    return false;
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
