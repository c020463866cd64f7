#pragma once

#include "market/KLineConverter.h"

#include <QDialog>

#include <atomic>
#include <memory>

class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QThread;

// Turns a folder of a terminal's day files or of CSV exports into the
// program's own K-line files in the configured data directory. The work runs
// on a thread of its own with a progress bar; cancelling stops between files,
// and every file is replaced whole.
class ImportDialog : public QDialog {
    Q_OBJECT
public:
    explicit ImportDialog(QWidget *parent = nullptr);
    ~ImportDialog() override;

    QLineEdit *sourceEdit() const { return m_source; }
    QComboBox *formatBox() const { return m_format; }
    QPlainTextEdit *log() const { return m_log; }
    bool isRunning() const { return m_thread != nullptr; }

public slots:
    void startImport();
    void cancelImport();
    void chooseSource();
    void reject() override;

signals:
    void importFinished();

private:
    QWidget *createOptions();
    void showProgress(int done, int total, const QString &code);
    void finishImport();
    void setRunning(bool running);
    void stopWorker();

    QLineEdit *m_source;
    QComboBox *m_format;
    QComboBox *m_stocks;
    QLabel *m_target;
    QProgressBar *m_progress;
    QPlainTextEdit *m_log;
    QPushButton *m_browse;
    QPushButton *m_start;
    QPushButton *m_cancel;
    QThread *m_thread = nullptr;
    std::atomic<bool> m_cancelRequested{false};
    std::shared_ptr<KLineConverter::Result> m_result;
};
