#pragma once

#include "HelpPages.h"

#include <QMainWindow>

class OrvelWidget;

// The main window: the script workbench and the menus around it.
class OrvelAnalyst : public QMainWindow {
    Q_OBJECT
public:
    explicit OrvelAnalyst(QWidget *parent = nullptr);

    OrvelWidget *workbench() const { return m_workbench; }

    // Replaces the editor's text by the file's when it holds more than 20
    // characters; shorter files are taken for accidents, and a box says so.
    void importScript(const QString &path);
    // Writes the editor's text to `path`, with ".script" added when the name
    // has no extension; the path written, or empty when it could not be.
    QString exportScript(const QString &path);

public slots:
    void loadScript();
    void saveScript();
    void config();
    void downloadData();
    void importData();
    void market();
    void question();
    void help();
    void about();

protected:
    // An edited, unsaved script is not closed without asking.
    void closeEvent(QCloseEvent *event) override;

private:
    QAction *addMenuAction(QMenu *menu, const QString &text, const char *slot);
    // The file's text in the editor when it is long enough; false otherwise.
    bool takeScript(const QString &path);
    void restoreSession();
    void showHelp(HelpPages::Page page);

    OrvelWidget *m_workbench;
};
