#pragma once

#include "sweep/SweepRun.h"

#include <QDialog>
#include <QFutureWatcher>

#include <memory>

class QComboBox;
class QCustomPlot;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QSortFilterProxyModel;
class QTableView;
class SweepResultModel;

// 参数优化: the script's placeholders, each with a field for its values
// ("5:20:5" or "3,5,8"); a run on a worker thread with progress and cancel;
// the results in a sortable table and, for two names, a heat map of the
// chosen column. Double-clicking a row hands that combination's script on.
class SweepDialog : public QDialog {
    Q_OBJECT
public:
    SweepDialog(const QString &script, QWidget *parent = nullptr);
    ~SweepDialog() override;

    QTableView *table() const { return m_table; }
    QCustomPlot *heatMap() const { return m_heatMap; }

signals:
    // The script with the values of the row double-clicked.
    void scriptChosen(const QString &script);

private:
    void start();
    void cancel();
    void onFinished();
    void chooseRow(const QModelIndex &proxyIndex);
    void drawHeatMap();
    void setRunning(bool running);

    QString m_script;
    QStringList m_names;
    std::vector<QLineEdit *> m_ranges;
    QComboBox *m_key;
    QPushButton *m_start;
    QPushButton *m_cancel;
    QProgressBar *m_progress;
    QLabel *m_status;
    SweepResultModel *m_model;
    QSortFilterProxyModel *m_proxy;
    QTableView *m_table;
    QCustomPlot *m_heatMap;
    std::shared_ptr<SweepRun> m_run;
    std::shared_ptr<SweepRun> m_shown; // the run whose rows are in the table
    QFutureWatcher<std::vector<SweepResult>> m_watcher;
};
