#pragma once

#include <QMainWindow>

class OrvelWidget;

// The main window: the script workbench and the menus around it.
class OrvelAnalyst : public QMainWindow {
    Q_OBJECT
public:
    explicit OrvelAnalyst(QWidget *parent = nullptr);

    OrvelWidget *workbench() const { return m_workbench; }

    // Replaces the editor's text by the file's when it holds more than 20
    // characters; shorter files are taken for accidents and ignored.
    void importScript(const QString &path);

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

private:
    QAction *addMenuAction(QMenu *menu, const QString &text, const char *slot);

    OrvelWidget *m_workbench;
};
