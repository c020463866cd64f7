#include "OrvelAnalyst.h"

#include "DownloadDialog.h"
#include "HelpViewer.h"
#include "ImportDialog.h"
#include "MarketBrowser.h"
#include "OrvelAboutDlg.h"
#include "OrvelStockMsgBox.h"
#include "OrvelTitle.h"
#include "OrvelWidget.h"
#include "StockConfigWidget.h"
#include "market/SafeFile.h"
#include "market/TextFile.h"
#include "script/StrategyConfig.h"

#include <QCloseEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QStatusBar>
#include <QTextEdit>

namespace {

const QString kScriptFilter = QStringLiteral("Script (*.script)");
constexpr int kShortestScript = 20;
const QString kLastScriptKey = QStringLiteral("lastScript");
const QString kGeometryKey = QStringLiteral("geometry");

void rememberScript(const QString &path)
{
    QSettings().setValue(kLastScriptKey, QFileInfo(path).absoluteFilePath());
}

} // namespace

OrvelAnalyst::OrvelAnalyst(QWidget *parent) : QMainWindow(parent), m_workbench(new OrvelWidget(this))
{
    setWindowTitle(orvelWindowTitle());
    setWindowIcon(QIcon(QStringLiteral(":logo/orvel.png")));
    setCentralWidget(m_workbench);

    QMenu *file = menuBar()->addMenu(QStringLiteral("文件"));
    addMenuAction(file, QStringLiteral("导入脚本"), SLOT(loadScript()))->setShortcut(Qt::CTRL | Qt::Key_O);
    addMenuAction(file, QStringLiteral("导出脚本"), SLOT(saveScript()))->setShortcut(Qt::CTRL | Qt::Key_S);
    addMenuAction(file, QStringLiteral("关闭"), SLOT(close()));
    QMenu *settings = menuBar()->addMenu(QStringLiteral("配置"));
    addMenuAction(settings, QStringLiteral("数据配置"), SLOT(config()));
    addMenuAction(settings, QStringLiteral("下载数据"), SLOT(downloadData()));
    addMenuAction(settings, QStringLiteral("导入数据…"), SLOT(importData()));
    addMenuAction(menuBar()->addMenu(QStringLiteral("行情")), QStringLiteral("行情"), SLOT(market()));
    QMenu *helpMenu = menuBar()->addMenu(QStringLiteral("帮助"));
    addMenuAction(helpMenu, QStringLiteral("疑问"), SLOT(question()));
    addMenuAction(helpMenu, QStringLiteral("帮助"), SLOT(help()));
    addMenuAction(helpMenu, QStringLiteral("关于"), SLOT(about()));

    // What the last run used stays in view under the editor.
    auto *settingsLine = new QLabel(this);
    settingsLine->setObjectName(QStringLiteral("runSettings"));
    settingsLine->setTextInteractionFlags(Qt::TextSelectableByMouse);
    statusBar()->addWidget(settingsLine, 1);
    connect(m_workbench, &OrvelWidget::runSettingsShown, settingsLine, &QLabel::setText);

    // The script shown at start is the program's own: nothing to save yet.
    m_workbench->editor()->document()->setModified(false);
    // F5 runs from anywhere in the window, the editor included.
    auto *run = new QAction(this);
    run->setShortcut(Qt::Key_F5);
    run->setShortcutContext(Qt::WindowShortcut);
    addAction(run);
    connect(run, &QAction::triggered, m_workbench, &OrvelWidget::clickButton);
    restoreSession();
}

// The window where it was left and the script last imported or exported.
void OrvelAnalyst::restoreSession()
{
    const QSettings settings;
    restoreGeometry(settings.value(kGeometryKey).toByteArray());
    const QString last = settings.value(kLastScriptKey).toString();
    if (!last.isEmpty() && QFileInfo(last).isFile())
        takeScript(last);
}

QAction *OrvelAnalyst::addMenuAction(QMenu *menu, const QString &text, const char *slot)
{
    auto *action = new QAction(text, this);
    connect(action, SIGNAL(triggered()), this, slot);
    menu->addAction(action);
    return action;
}

void OrvelAnalyst::loadScript()
{
    const QString path =
        QFileDialog::getOpenFileName(this, QStringLiteral("导入脚本"), QString(), kScriptFilter);
    if (!path.isEmpty())
        importScript(path);
}

bool OrvelAnalyst::takeScript(const QString &path)
{
    const QString text = readTextFile(path);
    if (text.size() <= kShortestScript)
        return false;
    m_workbench->editor()->setPlainText(text);
    m_workbench->editor()->document()->setModified(false);
    m_workbench->setScriptName(QFileInfo(path).fileName());
    return true;
}

void OrvelAnalyst::importScript(const QString &path)
{
    if (takeScript(path)) {
        rememberScript(path);
        return;
    }
    const QFileInfo info(path);
    const QString why =
        info.isFile() && info.isReadable()
            ? QStringLiteral("文件“%1”只有%2个字符：不超过%3个字符的文件被当作误选，编辑器中的脚本没有改变")
                  .arg(info.fileName())
                  .arg(readTextFile(path).size())
                  .arg(kShortestScript)
            : QStringLiteral("无法读取文件“%1”，编辑器中的脚本没有改变").arg(info.fileName());
    OrvelStockMsgBox box(QStringLiteral("导入脚本"), why, this);
    box.exec();
}

void OrvelAnalyst::saveScript()
{
    const QString path =
        QFileDialog::getSaveFileName(this, QStringLiteral("导出脚本"), QString(), kScriptFilter);
    if (!path.isEmpty())
        exportScript(path);
}

QString OrvelAnalyst::exportScript(const QString &chosen)
{
    // A name without extension would not show in the import dialog's filter.
    const QString path = QFileInfo(chosen).suffix().isEmpty() ? chosen + QStringLiteral(".script") : chosen;
    const QString text = m_workbench->editor()->toPlainText();
    const QString error =
        SafeFile::replace(path, TextFile::encode(text, TextEncoding::Gbk), SymlinkRule::FollowToRegularFile);
    if (!error.isEmpty()) {
        qWarning().noquote() << "cannot write" << path << error;
        return {};
    }
    m_workbench->editor()->document()->setModified(false);
    m_workbench->setScriptName(QFileInfo(path).fileName());
    rememberScript(path);
    return path;
}

void OrvelAnalyst::closeEvent(QCloseEvent *event)
{
    if (m_workbench->editor()->document()->isModified()) {
        QMessageBox box(QMessageBox::Question, QStringLiteral("关闭"),
                        QStringLiteral("脚本已修改，还没有导出。关闭前导出吗？"), QMessageBox::NoButton,
                        this);
        QPushButton *save = box.addButton(QStringLiteral("导出"), QMessageBox::AcceptRole);
        QPushButton *discard = box.addButton(QStringLiteral("不导出"), QMessageBox::DestructiveRole);
        box.addButton(QStringLiteral("取消"), QMessageBox::RejectRole);
        box.setDefaultButton(save);
        box.exec();
        if (box.clickedButton() == save)
            saveScript();
        // Cancelled, or the export was cancelled or failed: the script stays open.
        if (box.clickedButton() != discard && m_workbench->editor()->document()->isModified()) {
            event->ignore();
            return;
        }
    }
    QSettings().setValue(kGeometryKey, saveGeometry());
    event->accept();
}

void OrvelAnalyst::config()
{
    StockConfigWidget editor(this);
    editor.exec();
}

// Not modal: the window stays usable while codes download; closing the
// dialog cancels between requests, and files are only ever replaced whole.
void OrvelAnalyst::downloadData()
{
    auto *dialog = new DownloadDialog(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->show();
}

// Not modal either: the import runs on its own thread and closing the dialog
// stops it after the file in hand.
void OrvelAnalyst::importData()
{
    auto *dialog = new ImportDialog(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->show();
}

// Not modal: the stocks are read on worker threads while the user types.
void OrvelAnalyst::market()
{
    StrategyConfig config;
    config.applyLines(StrategyConfig::configFileText());
    auto *browser = new MarketBrowser(config.kLineSource(), this);
    browser->setAttribute(Qt::WA_DeleteOnClose);
    browser->show();
}

// Not modal: the pages stay open beside the script they explain.
void OrvelAnalyst::showHelp(HelpPages::Page page)
{
    auto *viewer = new HelpViewer(page, this);
    viewer->setAttribute(Qt::WA_DeleteOnClose);
    viewer->show();
}

void OrvelAnalyst::question() { showHelp(HelpPages::Questions); }

void OrvelAnalyst::help() { showHelp(HelpPages::Help); }

void OrvelAnalyst::about()
{
    OrvelAboutDlg dialog(this);
    dialog.exec();
}
