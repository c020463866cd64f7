// A user opens the program, looks around its menus, imports and exports
// scripts, edits the configuration and asks for help.
#include "WidgetTestSupport.h"
#include "market/TextFile.h"
#include "ui/DownloadDialog.h"
#include "ui/HelpViewer.h"
#include "ui/OrvelAnalyst.h"
#include "ui/StockConfigWidget.h"

#include <QDesktopServices>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QTemporaryDir>
#include <QTextBrowser>
#include <QTextEdit>
#include <QTranslator>
#include <QtTest>

// Stands in for the browser.
class UrlCatcher : public QObject {
    Q_OBJECT
public:
    QList<QUrl> urls;
public slots:
    void open(const QUrl &url) { urls << url; }
};

class MainWindowTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(QDir::setCurrent(m_workDir.path())); }
    void theWindowOpensWithTitleMenusAndTheDefaultScript();
    void importingTakesOnlyScriptsLongerThanTwentyCharacters();
    void exportingWritesTheEditorTextAsGbk();
    void theConfigurationEditorSavesAndReloads();
    void helpOpensLocalPages();
    void qtDialogsSpeakChinese();

private:
    // Triggers the menu entry and types `path` into the file dialog it opens.
    void chooseFile(OrvelAnalyst &window, const QString &entry, const QString &path);
    QString file(const QString &name, const QString &text = {});

    QTemporaryDir m_workDir;
};

void MainWindowTest::chooseFile(OrvelAnalyst &window, const QString &entry, const QString &path)
{
    ModalWatcher watcher([&](QWidget *modal) {
        QCOMPARE(modal->windowTitle(), entry);
        auto *fileName = modal->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        QVERIFY(qobject_cast<QFileDialog *>(modal) && fileName);
        fileName->setText(path);
        static_cast<QDialog *>(modal)->accept(); // as "Open" or "Save" does
    });
    menuAction(window, QStringLiteral("文件"), entry)->trigger();
    QCOMPARE(watcher.seen(), 1);
}

QString MainWindowTest::file(const QString &name, const QString &text)
{
    QFile file(m_workDir.filePath(name));
    if (!text.isEmpty() && file.open(QIODevice::WriteOnly))
        file.write(TextFile::encode(text, TextEncoding::Gbk));
    return file.fileName();
}

void MainWindowTest::theWindowOpensWithTitleMenusAndTheDefaultScript()
{
    OrvelAnalyst window;
    window.show();
    QCOMPARE(window.windowTitle(), QStringLiteral("Orvel股票量化分析软件1.7.0.1"));
    QVERIFY(!window.windowIcon().isNull());
    QStringList menus;
    for (QAction *top : window.menuBar()->actions()) {
        QStringList entries{top->text()};
        for (QAction *action : top->menu()->actions())
            entries << action->text();
        menus << entries.join(QLatin1Char('/'));
    }
    QCOMPARE(menus, (QStringList{"文件/导入脚本/导出脚本/关闭", "配置/数据配置/下载数据/导入数据…",
                                 "行情/行情", "帮助/疑问/帮助/关于"}));

    const QString script = child<QTextEdit>(window, "scriptEdit")->toPlainText();
    QVERIFY(script.contains(QStringLiteral("buy.close,-1<ma,5,-1")));
    QVERIFY(script.contains(QStringLiteral("1.7.0.1")) && !script.contains(QStringLiteral("VERSION#")));
    QVERIFY(child<QPushButton>(window, "runButton")->isEnabled());
    QVERIFY(!child<QPushButton>(window, "viewButton")->isEnabled());
    QVERIFY(child<QProgressBar>(window, "progressBar")->isHidden());

    // Downloading leaves the window usable.
    menuAction(window, QStringLiteral("配置"), QStringLiteral("下载数据"))->trigger();
    auto *download = window.findChild<DownloadDialog *>();
    QVERIFY(download && download->isVisible() && !download->isModal());
    download->close();

    menuAction(window, QStringLiteral("文件"), QStringLiteral("关闭"))->trigger();
    QVERIFY(!window.isVisible());
}

void MainWindowTest::importingTakesOnlyScriptsLongerThanTwentyCharacters()
{
    OrvelAnalyst window;
    window.show();
    auto *editor = child<QTextEdit>(window, "scriptEdit");
    const QString original = editor->toPlainText();
    const QString twenty = QStringLiteral("buy.close,0>ma,5,0\n#");
    const QString twentyOne = QStringLiteral("#线\nbuy.close,0>ma,5,0"); // characters, not GBK bytes, count
    QCOMPARE(twenty.size() + 1, twentyOne.size());

    {
        ModalWatcher box([](QWidget *) {}); // says why nothing changed
        window.importScript(file(QStringLiteral("short.script"), twenty));
        QCOMPARE(editor->toPlainText(), original);
        window.importScript(file(QStringLiteral("missing.script"))); // unreadable: nothing changes
        QCOMPARE(editor->toPlainText(), original);
        QCOMPARE(box.seen(), 2);
    }
    chooseFile(window, QStringLiteral("导入脚本"), file(QStringLiteral("long.script"), twentyOne));
    QCOMPARE(editor->toPlainText(), twentyOne);
}

void MainWindowTest::exportingWritesTheEditorTextAsGbk()
{
    OrvelAnalyst window;
    window.show();
    const QString text = QStringLiteral("#测试\nbuy.k.旭日东升,0");
    child<QTextEdit>(window, "scriptEdit")->setPlainText(text);
    chooseFile(window, QStringLiteral("导出脚本"), file(QStringLiteral("out.script")));
    QFile saved(file(QStringLiteral("out.script")));
    QVERIFY(saved.open(QIODevice::ReadOnly));
    QCOMPARE(saved.readAll(), TextFile::encode(text, TextEncoding::Gbk));
}

void MainWindowTest::theConfigurationEditorSavesAndReloads()
{
    OrvelAnalyst window;
    // The built-in file has CR LF line ends; an editor keeps lines, not ends.
    const QString builtIn = readTextFile(QStringLiteral(":qrc/config.conf")).remove(QLatin1Char('\r'));
    const QString edited =
        builtIn + QStringLiteral("\n#单日两只\nconfig.trade.max.count,2\nconfig.trade.max.lost,-5.5");
    const auto openEditor = [&window](const std::function<void(QTextEdit *)> &edit) {
        ModalWatcher watcher([&](QWidget *modal) {
            QVERIFY(qobject_cast<StockConfigWidget *>(modal) &&
                    modal->windowTitle() == QStringLiteral("基础配置"));
            edit(static_cast<StockConfigWidget *>(modal)->editor());
        });
        menuAction(window, QStringLiteral("配置"), QStringLiteral("数据配置"))->trigger();
        QCOMPARE(watcher.seen(), 1);
    };
    openEditor([&](QTextEdit *editor) {
        QCOMPARE(editor->toPlainText(), builtIn); // no file yet: the defaults
        editor->setPlainText(edited);
        pressButton(editor->window(), QStringLiteral("确定"));
    });
    QFile saved(QStringLiteral("config.conf"));
    QVERIFY(saved.open(QIODevice::ReadOnly));
    QCOMPARE(saved.readAll(), TextFile::encode(edited, TextEncoding::Gbk));
    openEditor([&](QTextEdit *editor) { QCOMPARE(editor->toPlainText(), edited); });
}

void MainWindowTest::helpOpensLocalPages()
{
    OrvelAnalyst window;
    window.show();
    UrlCatcher browser;
    QDesktopServices::setUrlHandler(QStringLiteral("file"), &browser, "open");
    menuAction(window, QStringLiteral("帮助"), QStringLiteral("疑问"))->trigger();
    menuAction(window, QStringLiteral("帮助"), QStringLiteral("帮助"))->trigger();
    // Both open inside the program, in Chinese, with the logo and the links between them.
    const QList<HelpViewer *> viewers = window.findChildren<HelpViewer *>();
    QCOMPARE(viewers.size(), 2);
    QCOMPARE(browser.urls.size(), 0);
    for (HelpViewer *viewer : viewers) {
        QVERIFY(viewer->isVisible());
        const QTextDocument *page = viewer->browser()->document();
        QVERIFY2(page->toPlainText().contains(QStringLiteral("脚本")), qPrintable(viewer->windowTitle()));
        QVERIFY(!viewer->browser()
                     ->loadResource(QTextDocument::ImageResource, QUrl(QStringLiteral("orvel.png")))
                     .isNull());
        auto *open = viewer->findChild<QLabel *>(QStringLiteral("openInBrowser"));
        QVERIFY(open && open->text().contains(QStringLiteral("在浏览器中打开")));
        emit open->linkActivated(QStringLiteral("#browser"));
    }
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
    QCOMPARE(browser.urls.size(), 2);
    QStringList names;
    for (const QUrl &url : browser.urls) {
        names << QFileInfo(url.toLocalFile()).fileName();
        QFile page(url.toLocalFile());
        QVERIFY2(page.open(QIODevice::ReadOnly) && page.readAll().contains("<title>"),
                 qPrintable(url.toString()));
    }
    names.sort();
    QCOMPARE(names, (QStringList{QStringLiteral("faq.htm"), QStringLiteral("readme.htm")}));
}

void MainWindowTest::qtDialogsSpeakChinese()
{
    if (!QFile::exists(QStringLiteral(":qrc/qt_zh_CN.qm")))
        QSKIP("Qt's Chinese catalogues were not found at build time");
    QTranslator translator;
    QVERIFY(translator.load(QStringLiteral(":qrc/qt_zh_CN.qm"))); // fails if a catalogue it names is missing
    QCOMPARE(translator.translate("QFileDialog", "Open"), QStringLiteral("打开"));
}

QTEST_MAIN(MainWindowTest)
#include "MainWindowTest.moc"
