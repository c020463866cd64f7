#pragma once

#include "HelpPages.h"

#include <QDialog>

class QTextBrowser;

// The bundled help pages read inside the program: whether the system has a
// browser set up cannot be told beforehand. "在浏览器中打开" hands the page
// to the browser all the same.
class HelpViewer : public QDialog {
    Q_OBJECT
public:
    HelpViewer(HelpPages::Page page, QWidget *parent = nullptr);

    QTextBrowser *browser() const { return m_browser; }

public slots:
    void openInBrowser();

private:
    QTextBrowser *m_browser;
};
