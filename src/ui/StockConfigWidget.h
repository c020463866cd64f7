#pragma once

#include <QDialog>

class QTextEdit;

// Edits "config.conf" as plain text. "确定" saves it, and the next run
// starts from it; closing the window any other way changes nothing.
class StockConfigWidget : public QDialog {
    Q_OBJECT
public:
    explicit StockConfigWidget(QWidget *parent = nullptr);

    QTextEdit *editor() const { return m_editor; }

public slots:
    void onConfig();

private:
    QTextEdit *m_editor;
};
