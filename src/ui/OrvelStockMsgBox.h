#pragma once

#include <QDialog>

class QLabel;

// The program's small fixed-size message box: a text, a line and "确定".
class OrvelStockMsgBox : public QDialog {
    Q_OBJECT
public:
    OrvelStockMsgBox(const QString &title, const QString &text, QWidget *parent = nullptr);

    QString text() const;

private:
    QLabel *m_label;
};
