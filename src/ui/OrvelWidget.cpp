#include "OrvelWidget.h"

#include "Highlighter.h"
#include "LoadedStocks.h"
#include "OrvelStockMsgBox.h"
#include "OrvelTitle.h"
#include "RunningConfig.h"
#include "StrategyViewWidget.h"
#include "engine/OutputCsv.h"
#include "engine/RunSummary.h"
#include "engine/StockThreadTarget.h"
#include "indicators/KPatternTable.h"
#include "market/TextFile.h"
#include "script/MetaEvalutor.h"
#include "script/Script.h"

#include <QGridLayout>
#include <QProgressBar>
#include <QPushButton>
#include <QSpacerItem>
#include <QTextEdit>

OrvelWidget::OrvelWidget(QWidget *parent)
    : QWidget(parent), m_layout(new QGridLayout(this)), m_edit(new QTextEdit(this)),
      m_progress(new QProgressBar(this)), m_button(new QPushButton(QStringLiteral("执行"), this)),
      m_viewButton(new QPushButton(QStringLiteral("查看"), this)), m_thread(new StockThreadTarget(this)),
      m_highlighter(new Highlighter(m_edit->document(), keywordPatterns()))
{
    setMinimumSize(480, 360);
    m_edit->setObjectName(QStringLiteral("scriptEdit"));
    m_progress->setObjectName(QStringLiteral("progressBar"));
    m_button->setObjectName(QStringLiteral("runButton"));
    m_viewButton->setObjectName(QStringLiteral("viewButton"));

    m_layout->addWidget(m_edit, 0, 0, 1, 3);
    m_layout->addWidget(m_progress, 1, 0, 1, 3);
    m_layout->addItem(new QSpacerItem(217, 20, QSizePolicy::Expanding, QSizePolicy::Minimum), 2, 0);
    m_layout->addWidget(m_button, 2, 1);
    m_layout->addWidget(m_viewButton, 2, 2);

    setUpEditor();
    m_progress->setValue(0);
    m_progress->setTextVisible(false);
    m_progress->hide();

    connect(m_button, SIGNAL(clicked()), this, SLOT(clickButton()));
    connect(m_viewButton, SIGNAL(clicked()), this, SLOT(clickView()));
    // Results open by themselves at the end of a run, and reading the book
    // while a run writes it would not be safe; the view button stays off.
    m_viewButton->setEnabled(false);

    // The worker emits on its own thread; queued delivery keeps every widget
    // change on this one, and the window repaints while a run goes on.
    connect(m_thread, SIGNAL(updateStock(int, const QString &)), this,
            SLOT(onUpdateStock(int, const QString &)), Qt::QueuedConnection);
    connect(m_thread, SIGNAL(updateFinished()), this, SLOT(onUpdateFinished()), Qt::QueuedConnection);
}

OrvelWidget::~OrvelWidget()
{
    // A run has no cancel; closing the window waits for it rather than
    // destroying a thread that is still running.
    m_thread->wait();
}

void OrvelWidget::setUpEditor()
{
    QTextEdit::ExtraSelection currentLine;
    currentLine.format.setBackground(QBrush(Qt::gray));
    currentLine.format.setProperty(QTextFormat::FullWidthSelection, true);
    currentLine.cursor = m_edit->textCursor();
    currentLine.cursor.clearSelection();
    m_edit->setExtraSelections({currentLine});

    QFont font = m_edit->font();
    font.setPointSize(12);
    font.setFixedPitch(true);
    m_edit->setFont(font);
    m_edit->setStyleSheet(QStringLiteral("QTextEdit { background: gray }"));

    QString script = readTextFile(QStringLiteral(":qrc/default.script"));
    m_edit->setPlainText(script.replace(QStringLiteral("VERSION#"), orvelVersion()));
}

QStringList OrvelWidget::keywordPatterns()
{
    return evaluatorKeywordList() + configKeywordList().split(QLatin1Char('|')) + ruleKeywordList() +
           KPatternTable::names();
}

void OrvelWidget::clickButton()
{
    m_files.clear();
    m_thread->tradeBook().clear();
    m_progress->hide();

    const QString text = m_edit->toPlainText();
    StrategyConfig &config = runningConfig();
    Script script;
    int errorLine = 0;
    const int result = compileScript(script, config, text, errorLine);
    if (result == -1) {
        // No line number means the script has no buy statement: nothing to run, nothing to say.
        if (errorLine > 0)
            showMessage(QStringLiteral("预编译出错"), QStringLiteral("第:%1行有错误").arg(errorLine));
        return;
    }
    if (result == -2) {
        showMessage(QStringLiteral("预编译出错"), QStringLiteral("脚本缺少买点"));
        return;
    }

    m_files = config.kLineSource().list();
    if (m_files.isEmpty()) {
        showMessage(QStringLiteral("警告"),
                    QStringLiteral("文件夹%1不存在或其中缺少股票文件").arg(config.kDir));
        m_progress->hide();
        return;
    }
    m_button->setEnabled(false);
    m_progress->setValue(0);
    m_progress->show();
    m_runConfig = config;
    m_thread->setFiles(m_files);
    m_thread->setStrategy(text, config);
    m_thread->start(QThread::InheritPriority);
}

void OrvelWidget::clickView()
{
    const RunSummary summary = RunSummary::fromBook(m_thread->tradeBook());
    QString text = summary.text();
    if (m_runConfig.rules.any())
        text += (text.endsWith(QLatin1Char('\n')) ? QString() : QStringLiteral("\n")) +
                m_thread->ruleEffects().text();
    showMessage(QStringLiteral("策略数据汇总"), text);

    LoadedStocks stocks(m_files, m_runConfig);
    StrategyViewWidget results(this);
    results.setStocks(&stocks);
    results.fill(summary.rows);
    results.setReport(m_thread->report());
    results.exec();
}

void OrvelWidget::onUpdateStock(int percent, const QString &) { m_progress->setValue(percent); }

void OrvelWidget::onUpdateFinished()
{
    // The signal is the worker's last act; once it has returned, the book is ours.
    m_thread->wait();
    TradeBook &book = m_thread->tradeBook();
    book.applyDayLimit(m_runConfig.maxCount, m_runConfig.buyOrder);
    const QString error = writeOutputCsv(QStringLiteral("output.csv"), book, TextEncoding::Gbk);
    if (!error.isEmpty())
        qWarning().noquote() << "output.csv not written:" << error;
    m_progress->hide();
    m_button->setEnabled(true);
    clickView();
}

void OrvelWidget::showMessage(const QString &title, const QString &text)
{
    OrvelStockMsgBox box(title, text, this);
    box.exec();
}
