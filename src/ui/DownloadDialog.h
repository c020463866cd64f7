#pragma once

#include <QDialog>

class KLineDownloader;
class QComboBox;
class QLabel;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;

// The directory "config.conf" (or the built-in copy) names, read anew each
// time as a run reads it.
QString configuredDataDir();

// Downloads history K-lines into the configured data directory: codes typed
// or read from a file, the adjustment and period, a progress bar and a log
// line per code. Requests run on the event loop one after another, so the
// windows stay responsive; cancelling aborts the request in flight.
class DownloadDialog : public QDialog {
    Q_OBJECT
public:
    explicit DownloadDialog(QWidget *parent = nullptr);

    QPlainTextEdit *codesEditor() const { return m_codes; }
    QPlainTextEdit *log() const { return m_log; }
    // The folder the files go to, as a full path.
    QString targetDir() const;
    void setTargetDir(const QString &dir);

public slots:
    void startDownload();
    void cancelDownload();
    void loadCodesFile();
    void chooseTargetDir();
    void reject() override;

private:
    QWidget *createOptions();
    void connectDownloader();
    void setRunning(bool running);
    void appendLog(const QString &line);
    // False when the user would rather not replace files of another adjustment.
    bool confirmAdjustment(const QStringList &codes, const QString &dir, const QString &adjustment);

    KLineDownloader *m_downloader;
    QPlainTextEdit *m_codes;
    QComboBox *m_adjustment;
    QComboBox *m_period;
    QLabel *m_target;
    QProgressBar *m_progress;
    QPlainTextEdit *m_log;
    QPushButton *m_fromFile;
    QPushButton *m_chooseTarget;
    QString m_chosenDir; // empty: the configured data folder
    QPushButton *m_start;
    QPushButton *m_cancel;
    int m_done = 0;
    int m_refused = 0;
    bool m_cancelled = false;
};
