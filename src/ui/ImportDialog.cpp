#include "ImportDialog.h"

#include "DownloadDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QThread>
#include <QVBoxLayout>

ImportDialog::ImportDialog(QWidget *parent)
    : QDialog(parent), m_source(new QLineEdit(this)), m_format(new QComboBox(this)),
      m_stocks(new QComboBox(this)), m_target(new QLabel(this)), m_progress(new QProgressBar(this)),
      m_log(new QPlainTextEdit(this)), m_browse(new QPushButton(QStringLiteral("浏览…"), this)),
      m_start(new QPushButton(QStringLiteral("开始导入"), this)),
      m_cancel(new QPushButton(QStringLiteral("取消"), this))
{
    setWindowTitle(QStringLiteral("导入数据"));
    m_source->setPlaceholderText(QStringLiteral("vipdoc 文件夹、lday 文件夹或 CSV 文件夹"));
    m_log->setReadOnly(true);
    m_progress->setValue(0);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->addButton(m_start, QDialogButtonBox::ActionRole);
    buttons->addButton(m_cancel, QDialogButtonBox::ActionRole);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(createOptions());
    layout->addWidget(m_progress);
    layout->addWidget(m_log);
    layout->addWidget(buttons);

    connect(m_browse, &QPushButton::clicked, this, &ImportDialog::chooseSource);
    connect(m_start, &QPushButton::clicked, this, &ImportDialog::startImport);
    connect(m_cancel, &QPushButton::clicked, this, &ImportDialog::cancelImport);
    connect(buttons, &QDialogButtonBox::rejected, this, &ImportDialog::reject);
    setRunning(false);
    resize(520, 420);
}

ImportDialog::~ImportDialog() { stopWorker(); }

QWidget *ImportDialog::createOptions()
{
    m_format->addItem(QStringLiteral("通达信日线文件 (.day)"), QStringLiteral("tdx"));
    m_format->addItem(QStringLiteral("CSV 文件"), QStringLiteral("csv"));
    m_stocks->addItem(QStringLiteral("仅A股股票"), QStringLiteral("only"));
    m_stocks->addItem(QStringLiteral("全部代码(含指数、基金)"), QStringLiteral("all"));
    m_target->setText(configuredDataDir());

    auto *sourceRow = new QWidget(this);
    auto *row = new QHBoxLayout(sourceRow);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_source);
    row->addWidget(m_browse);

    auto *options = new QWidget(this);
    auto *form = new QFormLayout(options);
    form->setContentsMargins(0, 0, 0, 0);
    form->addRow(QStringLiteral("来源文件夹"), sourceRow);
    form->addRow(QStringLiteral("格式"), m_format);
    form->addRow(QStringLiteral("范围"), m_stocks);
    form->addRow(QStringLiteral("保存到"), m_target);
    return options;
}

void ImportDialog::chooseSource()
{
    const QString dir =
        QFileDialog::getExistingDirectory(this, QStringLiteral("选择来源文件夹"), m_source->text());
    if (!dir.isEmpty())
        m_source->setText(dir);
}

void ImportDialog::startImport()
{
    if (m_thread)
        return;
    KLineSource source;
    source.dir = m_source->text().trimmed();
    source.format = m_format->currentData().toString();
    source.stocks = m_stocks->currentData().toString();
    if (source.dir.isEmpty()) {
        m_log->appendPlainText(QStringLiteral("请先选择来源文件夹"));
        return;
    }
    const QString target = configuredDataDir(); // the editor may have changed it since we opened
    m_target->setText(target);
    m_log->appendPlainText(QStringLiteral("从 %1 导入到 %2 …").arg(source.dir, target));
    m_progress->setMaximum(1);
    m_progress->setValue(0);
    m_cancelRequested = false;
    m_result = std::make_shared<KLineConverter::Result>();
    setRunning(true);

    // The worker touches only its own copies and the shared result; what the
    // window shows is posted to the interface thread.
    auto result = m_result;
    m_thread = QThread::create([this, source, target, result] {
        *result = KLineConverter(source, target)
                      .run(
                          [this](int done, int total, const QString &code) {
                              QMetaObject::invokeMethod(
                                  this, [this, done, total, code] { showProgress(done, total, code); },
                                  Qt::QueuedConnection);
                          },
                          &m_cancelRequested);
    });
    connect(m_thread, &QThread::finished, this, &ImportDialog::finishImport);
    m_thread->start();
}

void ImportDialog::showProgress(int done, int total, const QString &code)
{
    m_progress->setMaximum(total);
    m_progress->setValue(done);
    m_progress->setFormat(QStringLiteral("%v/%m %1").arg(code));
}

void ImportDialog::finishImport()
{
    stopWorker();
    const KLineConverter::Result &result = *m_result;
    for (const QString &path : result.skipped)
        m_log->appendPlainText(QStringLiteral("%1: 没有可用的数据, 已跳过 (原因见 output.txt)").arg(path));
    if (!result.writeError.isEmpty())
        m_log->appendPlainText(QStringLiteral("无法写入: %1").arg(result.writeError));
    const QString outcome = result.cancelled ? QStringLiteral("已取消") : QStringLiteral("完成");
    if (result.converted == 0 && result.skipped.isEmpty() && result.writeError.isEmpty())
        m_log->appendPlainText(QStringLiteral("%1: 来源文件夹中没有可导入的文件").arg(outcome));
    else
        m_log->appendPlainText(QStringLiteral("%1: %2 个已导入, %3 个跳过")
                                   .arg(outcome)
                                   .arg(result.converted)
                                   .arg(result.skipped.size()));
    setRunning(false);
    emit importFinished();
}

void ImportDialog::cancelImport()
{
    if (!m_thread)
        return;
    m_log->appendPlainText(QStringLiteral("正在取消…"));
    m_cancel->setEnabled(false);
    m_cancelRequested = true;
}

// Closing while an import runs stops it after the file in hand.
void ImportDialog::reject()
{
    cancelImport();
    stopWorker();
    QDialog::reject();
}

void ImportDialog::stopWorker()
{
    if (!m_thread)
        return;
    m_cancelRequested = true;
    m_thread->wait();
    delete m_thread;
    m_thread = nullptr;
}

void ImportDialog::setRunning(bool running)
{
    m_source->setReadOnly(running);
    m_browse->setEnabled(!running);
    m_format->setEnabled(!running);
    m_stocks->setEnabled(!running);
    m_start->setEnabled(!running);
    m_cancel->setEnabled(running);
}
