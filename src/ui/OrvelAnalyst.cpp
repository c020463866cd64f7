#include "OrvelAnalyst.h"

#include "DownloadDialog.h"
#include "HelpPages.h"
#include "ImportDialog.h"
#include "MarketBrowser.h"
#include "OrvelAboutDlg.h"
#include "OrvelTitle.h"
#include "OrvelWidget.h"
#include "StockConfigWidget.h"
#include "market/SafeFile.h"
#include "market/TextFile.h"
#include "script/StrategyConfig.h"

#include <QDesktopServices>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenuBar>
#include <QTextEdit>

namespace {

const QString kScriptFilter = QStringLiteral("Script (*.script)");
constexpr int kShortestScript = 20;

} // namespace

OrvelAnalyst::OrvelAnalyst(QWidget *parent) : QMainWindow(parent), m_workbench(new OrvelWidget(this))
{
    setWindowTitle(orvelWindowTitle());
    setWindowIcon(QIcon(QStringLiteral(":logo/orvel.png")));
    setCentralWidget(m_workbench);

    QMenu *file = menuBar()->addMenu(QStringLiteral("文件"));
    addMenuAction(file, QStringLiteral("导入脚本"), SLOT(loadScript()));
    addMenuAction(file, QStringLiteral("导出脚本"), SLOT(saveScript()));
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

void OrvelAnalyst::importScript(const QString &path)
{
    const QString text = readTextFile(path);
    if (text.size() <= kShortestScript)
        return;
    m_workbench->editor()->setPlainText(text);
    m_workbench->setScriptName(QFileInfo(path).fileName());
}

void OrvelAnalyst::saveScript()
{
    const QString path =
        QFileDialog::getSaveFileName(this, QStringLiteral("导出脚本"), QString(), kScriptFilter);
    if (path.isEmpty())
        return;
    const QString text = m_workbench->editor()->toPlainText();
    const QString error =
        SafeFile::replace(path, TextFile::encode(text, TextEncoding::Gbk), SymlinkRule::FollowToRegularFile);
    if (!error.isEmpty())
        qWarning().noquote() << "cannot write" << path << error;
    else
        m_workbench->setScriptName(QFileInfo(path).fileName());
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

void OrvelAnalyst::question() { QDesktopServices::openUrl(HelpPages::url(HelpPages::Questions)); }

void OrvelAnalyst::help() { QDesktopServices::openUrl(HelpPages::url(HelpPages::Help)); }

void OrvelAnalyst::about()
{
    OrvelAboutDlg dialog(this);
    dialog.exec();
}
