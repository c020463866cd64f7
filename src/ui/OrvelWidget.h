#pragma once

#include "market/StockFileList.h"
#include "script/StrategyConfig.h"

#include <QWidget>

class Highlighter;
class QGridLayout;
class QProgressBar;
class QPushButton;
class QTextEdit;
class StockThreadTarget;

// The script workbench: the highlighted editor, the run's progress bar,
// "执行" and "查看". A run compiles the editor's script, walks the data
// directory on the worker thread and ends with the summary and the results.
class OrvelWidget : public QWidget {
    Q_OBJECT
public:
    explicit OrvelWidget(QWidget *parent = nullptr);
    ~OrvelWidget() override;

    QTextEdit *editor() const { return m_edit; }

    // The vocabulary the editor highlights: evaluator names, configuration
    // keys and candlestick pattern names.
    static QStringList keywordPatterns();

public slots:
    void clickButton();
    void clickView();
    void onUpdateStock(int percent, const QString &code);
    void onUpdateFinished();

private:
    void setUpEditor();
    void showMessage(const QString &title, const QString &text);

    QGridLayout *m_layout;
    QTextEdit *m_edit;
    QProgressBar *m_progress;
    QPushButton *m_button;
    QPushButton *m_viewButton;
    StockThreadTarget *m_thread;
    Highlighter *m_highlighter;
    StockFileList m_files;
    StrategyConfig m_runConfig; // as the last run started, for its charts and day limit
};
