#include "OrvelWidget.h"

#include "Highlighter.h"
#include "CandlestickView.h"
#include "LoadedStocks.h"
#include "OrvelStockMsgBox.h"
#include "OrvelTitle.h"
#include "ScriptEditor.h"
#include "StrategyViewWidget.h"
#include "SweepDialog.h"
#include "engine/BacktestRun.h"
#include "engine/OutputCsv.h"
#include "engine/RunNotes.h"
#include "engine/RunSummary.h"
#include "indicators/KPatternTable.h"
#include "market/TextFile.h"
#include "script/MetaEvalutor.h"
#include "script/ScriptPlaceholders.h"

#include <QFontDatabase>
#include <QGridLayout>
#include <QProgressBar>
#include <QPushButton>
#include <QSpacerItem>
#include <QTextEdit>
#include <QtConcurrent>

OrvelWidget::OrvelWidget(QWidget *parent)
    : QWidget(parent), m_layout(new QGridLayout(this)), m_edit(new ScriptEditor(this)),
      m_progress(new QProgressBar(this)), m_button(new QPushButton(QStringLiteral("执行"), this)),
      m_viewButton(new QPushButton(QStringLiteral("查看"), this)),
      m_highlighter(new Highlighter(m_edit->document(), keywordPatterns()))
{
    setMinimumSize(480, 360);
    m_edit->setObjectName(QStringLiteral("scriptEdit"));
    m_progress->setObjectName(QStringLiteral("progressBar"));
    m_button->setObjectName(QStringLiteral("runButton"));
    m_viewButton->setObjectName(QStringLiteral("viewButton"));

    m_layout->addWidget(m_edit, 0, 0, 1, 4);
    m_layout->addWidget(m_progress, 1, 0, 1, 4);
    m_layout->addItem(new QSpacerItem(217, 20, QSizePolicy::Expanding, QSizePolicy::Minimum), 2, 0);
    m_layout->addWidget(m_button, 2, 1);
    m_layout->addWidget(m_viewButton, 2, 2);
    auto *sweepButton = new QPushButton(QStringLiteral("参数优化"), this);
    sweepButton->setObjectName(QStringLiteral("sweepButton"));
    m_layout->addWidget(sweepButton, 2, 3);
    connect(sweepButton, &QPushButton::clicked, this, &OrvelWidget::clickSweep);

    setUpEditor();
    m_progress->setValue(0);
    m_progress->setTextVisible(false);
    m_progress->hide();

    connect(m_button, &QPushButton::clicked, this, &OrvelWidget::clickButton);
    connect(m_viewButton, &QPushButton::clicked, this, &OrvelWidget::clickView);
    // Nothing to show until a run has finished.
    m_viewButton->setEnabled(false);

    // The watcher reports on this thread: every widget change stays here, and
    // the window repaints while a run goes on.
    connect(&m_watcher, &QFutureWatcher<TradeBook>::progressValueChanged, this, &OrvelWidget::onUpdateStock);
    connect(&m_watcher, &QFutureWatcher<TradeBook>::finished, this, &OrvelWidget::onUpdateFinished);
}

OrvelWidget::~OrvelWidget()
{
    if (!m_watcher.isRunning())
        return;
    m_run->cancel();
    m_watcher.waitForFinished();
}

void OrvelWidget::setUpEditor()
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSize(12);
    font.setStyleHint(QFont::Monospace);
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
    if (m_watcher.isRunning())
        return;
    m_progress->hide();
    // Run as written, `ma,$n,0` would quietly read as period 0.
    const QString leftover = ScriptPlaceholders::leftoverWarning(m_edit->toPlainText());
    if (!leftover.isEmpty()) {
        showMessage(QStringLiteral("警告"), leftover + QStringLiteral("\n请用 参数优化 为它们取值后运行"));
        return;
    }
    // Each run starts from the configuration file, as the command line's does:
    // a script's `config.` lines hold for that run alone.
    auto run = std::make_shared<BacktestRun>(StrategyConfig::configFileText(), m_edit->toPlainText());
    if (run->problem() != BacktestRun::Problem::None) {
        // The line is marked before the box opens, so the user sees both at once.
        if (run->errorLine() > 0)
            m_edit->markErrorLine(run->errorLine(), run->problemReason());
        const QString reason = run->problemReason();
        showMessage(run->problemTitle(),
                    run->problemText() + (reason.isEmpty() ? QString() : u'\n' + reason));
        return;
    }
    run->setPicking(true);
    m_run = run;
    m_runTitle =
        QStringLiteral("%1 %2 - %3")
            .arg(m_scriptName, QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")),
                 orvelWindowTitle());
    m_button->setEnabled(false);
    m_viewButton->setEnabled(false);
    m_progress->setValue(0);
    m_progress->show();
    auto report = std::make_shared<StrategyReport>();
    m_report = report;
    m_watcher.setFuture(QtConcurrent::run([run, report](QPromise<TradeBook> &promise) {
        promise.setProgressRange(0, 100);
        run->setProgress([&promise](int percent, const QString &) { promise.setProgressValue(percent); });
        ReportMarket market;
        run->setObserver([&market](int fileIndex, const StockSeries &series) {
            market.addStock(fileIndex, series.code, series.view());
        });
        TradeBook book = run->run();
        // Built here, off the interface thread, so the window never waits for it.
        *report = computeReport(reportTradesOf(book), market, run->config().report);
        if (run->config().rules.any())
            report->rules = run->ruleEffects();
        promise.addResult(std::move(book));
    }));
}

// The search runs beside the workbench; a row chosen there becomes the editor's script.
void OrvelWidget::clickSweep()
{
    auto *dialog = new SweepDialog(m_edit->toPlainText(), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &SweepDialog::scriptChosen, m_edit, &QTextEdit::setPlainText);
    dialog->show();
}

StrategyViewWidget *OrvelWidget::results() const { return m_results; }

void OrvelWidget::clickView()
{
    if (!m_run || m_watcher.isRunning())
        return;
    RunSummary summary = RunSummary::fromBook(m_book);
    QString text = summary.text();
    const QString why =
        summary.rows == 0 ? RunNotes::noDataReason(m_run->config(), m_run->counts()) : QString();
    if (!why.isEmpty())
        text += QLatin1Char('\n') + why;
    if (m_run->config().rules.any())
        text += (text.endsWith(QLatin1Char('\n')) ? QString() : QStringLiteral("\n")) +
                m_run->ruleEffects().text();
    showMessage(QStringLiteral("策略数据汇总"), text);

    if (!m_results) {
        m_results = new StrategyViewWidget(this);
        m_results->setAttribute(Qt::WA_DeleteOnClose);
    }
    const StrategyConfig &config = m_run->config();
    m_results->setStocks(std::make_unique<LoadedStocks>(m_run->files(), config.kLineSource()));
    m_results->chart()->setDmiPeriods(m_run->strategy()->dmiPeriods());
    m_results->fill(m_book.rows());
    m_results->setReport(*m_report);
    m_results->setPicks(m_run->picks());
    m_results->setWindowTitle(m_runTitle);
    m_results->show();
    m_results->raise();
    m_results->activateWindow();
}

void OrvelWidget::onUpdateStock(int percent) { m_progress->setValue(percent); }

void OrvelWidget::onUpdateFinished()
{
    m_progress->hide();
    m_button->setEnabled(true);
    if (m_run->isCancelled() || m_watcher.future().resultCount() == 0)
        return;
    m_book = m_watcher.result();
    emit runSettingsShown(RunNotes::effectiveSettings(m_run->config(), m_run->counts()));
    const QString error = writeOutputCsv(QStringLiteral("output.csv"), m_book, TextEncoding::Gbk);
    if (!error.isEmpty())
        qWarning().noquote() << "output.csv not written:" << error;
    m_viewButton->setEnabled(true);
    clickView();
}

void OrvelWidget::showMessage(const QString &title, const QString &text)
{
    OrvelStockMsgBox box(title, text, this);
    box.exec();
}
