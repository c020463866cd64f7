#pragma once

#include <QDialog>

// The program's name, version and purpose.
class OrvelAboutDlg : public QDialog {
    Q_OBJECT
public:
    explicit OrvelAboutDlg(QWidget *parent = nullptr);
};
