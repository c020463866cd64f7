#pragma once

#include "ScriptEditor.h"
#include "engine/TradeBook.h"
#include "report/StrategyReport.h"

#include <QDateTime>
#include <QFutureWatcher>
#include <QPointer>
#include <QWidget>

#include <memory>

class BacktestRun;
class Highlighter;
class QGridLayout;
class QProgressBar;
class QPushButton;
class QTextEdit;
class StrategyViewWidget;

// The script workbench: the highlighted editor, the run's progress bar,
// "执行" and "查看". A run starts from "config.conf" and the editor's script,
// walks the data directory off the interface thread and ends with the
// summary and the results; "查看" shows the last run's again.
class OrvelWidget : public QWidget {
    Q_OBJECT
public:
    explicit OrvelWidget(QWidget *parent = nullptr);
    // Closing during a run cancels it: no further stock is started.
    ~OrvelWidget() override;

    QTextEdit *editor() const { return m_edit; }
    // The open results window, if any.
    StrategyViewWidget *results() const;
    // The name the results window is titled with: the script's file.
    void setScriptName(const QString &name) { m_scriptName = name; }

    // The vocabulary the editor highlights: evaluator names, configuration
    // keys and candlestick pattern names.
    static QStringList keywordPatterns();

signals:
    // After each run: the settings it used, on one line (data folder and
    // stocks read, sale point, take-profit, stop-loss and the rest).
    void runSettingsShown(const QString &line);

public slots:
    void clickButton();
    void clickView();
    // "参数优化": the search over the editor script's placeholders.
    void clickSweep();
    void onUpdateStock(int percent);
    void onUpdateFinished();

private:
    void setUpEditor();
    void showMessage(const QString &title, const QString &text);

    QGridLayout *m_layout;
    ScriptEditor *m_edit;
    QProgressBar *m_progress;
    QPushButton *m_button;
    QPushButton *m_viewButton;
    Highlighter *m_highlighter;
    QFutureWatcher<TradeBook> m_watcher;
    std::shared_ptr<BacktestRun> m_run; // the run going on, or the last one
    std::shared_ptr<StrategyReport> m_report; // the last run's, filled by its worker
    TradeBook m_book;                   // the last finished run's trades
    QString m_scriptName = QStringLiteral("default.script");
    QString m_runTitle; // the script's name and the start time of the run in m_run
    QPointer<StrategyViewWidget> m_results;
};
