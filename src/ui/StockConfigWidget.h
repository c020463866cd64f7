#pragma once

#include <QDialog>

class QLabel;
class QTextEdit;
class ScriptEditor;

// Edits "config.conf" as plain text. "确定" saves it, and the next run
// starts from it; closing the window any other way changes nothing.
class StockConfigWidget : public QDialog {
    Q_OBJECT
public:
    explicit StockConfigWidget(QWidget *parent = nullptr);

    QTextEdit *editor() const;
    // The line under the editor that names the text's warnings.
    QLabel *warningLine() const { return m_warnings; }

public slots:
    void onConfig();

private:
    void showWarnings();

    ScriptEditor *m_editor;
    QLabel *m_warnings;
};
