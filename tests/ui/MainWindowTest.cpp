// A user opens the program, imports a script, edits the configuration, asks
// for help and imports a terminal's day files.
#include "../DayFileSupport.h"
#include "WidgetTestSupport.h"
#include "market/TextFile.h"
#include "ui/DownloadDialog.h"
#include "ui/HelpViewer.h"
#include "ui/ImportDialog.h"
#include "ui/OrvelAnalyst.h"
#include "ui/StockConfigWidget.h"

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
    void theWindowOpensWithTheDefaultScript();
    void importingTakesOnlyScriptsLongerThanTwentyCharacters();
    void theConfigurationEditorSavesAndReloads();
    void helpOpensLocalPages();
    void qtDialogsSpeakChinese();
    void importingDayFilesFillsTheDataFolderWithoutBlockingTheWindow(); // after the configuration's test

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
    if (!text.isEmpty())
        writeTestFile(m_workDir.filePath(name), TextFile::encode(text, TextEncoding::Gbk));
    return m_workDir.filePath(name);
}

void MainWindowTest::theWindowOpensWithTheDefaultScript()
{
    OrvelAnalyst window;
    window.show();
    QVERIFY(!window.windowIcon().isNull());
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
        QStringList boxes; // each says why nothing changed
        ModalWatcher watcher(noteBoxes(boxes));
        window.importScript(file(QStringLiteral("short.script"), twenty));
        window.importScript(file(QStringLiteral("missing.script")));
        QCOMPARE(editor->toPlainText(), original);
        QCOMPARE(boxes.size(), 2);
        QVERIFY2(boxes[0].contains(QStringLiteral("只有20个字符")), qPrintable(boxes[0]));
        QVERIFY(boxes[1].contains(QStringLiteral("无法读取")));
    }
    chooseFile(window, QStringLiteral("导入脚本"), file(QStringLiteral("long.script"), twentyOne));
    QCOMPARE(editor->toPlainText(), twentyOne);
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
    QCOMPARE(readTestFile(QStringLiteral("config.conf")), TextFile::encode(edited, TextEncoding::Gbk));
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
        QVERIFY(viewer->browser()->document()->toPlainText().contains(QStringLiteral("脚本")));
        // The logo is found beside the page.
        QVERIFY(!viewer->browser()
                     ->loadResource(QTextDocument::ImageResource, QUrl(QStringLiteral("orvel.png")))
                     .isNull());
        emit viewer->findChild<QLabel *>(QStringLiteral("openInBrowser"))->linkActivated("#browser");
    }
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
    QStringList names;
    for (const QUrl &url : browser.urls) {
        names << QFileInfo(url.toLocalFile()).fileName();
        QVERIFY2(readTestFile(url.toLocalFile()).contains("<title>"), qPrintable(url.toString()));
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

// A terminal's day files brought into the data folder.
void MainWindowTest::importingDayFilesFillsTheDataFolderWithoutBlockingTheWindow()
{
    const QString lday = m_workDir.filePath(QStringLiteral("vipdoc/sz/lday"));
    QVERIFY(QDir().mkpath(lday));
    for (const char *name : {"sz000001.day", "sz000002.day", "sz399001.day"})
        QVERIFY(
            writeTestFile(lday + QLatin1Char('/') + QLatin1String(name), dayFileBytes(randomDays(30, 1))));
    QVERIFY(writeTestFile(lday + QStringLiteral("/sz000003.day"), QByteArray(40, 'x'))); // not whole days

    OrvelAnalyst window;
    window.show();
    const QString data = m_workDir.filePath(QStringLiteral("data"));
    QVERIFY(writeTestFile(QStringLiteral("config.conf"), "config.source.k.dir," + data.toUtf8()));
    menuAction(window, QStringLiteral("配置"), QStringLiteral("导入数据…"))->trigger();
    auto *dialog = window.findChild<ImportDialog *>();
    QVERIFY(dialog && dialog->isVisible() && !dialog->isModal());
    dialog->sourceEdit()->setText(m_workDir.filePath(QStringLiteral("vipdoc")));
    QCOMPARE(dialog->formatBox()->currentData().toString(), QStringLiteral("tdx"));

    QSignalSpy finished(dialog, &ImportDialog::importFinished);
    pressButton(dialog, QStringLiteral("开始导入"));
    QVERIFY(finished.wait(10000));
    QCOMPARE(QDir(data).entryList(QDir::Files), (QStringList{"000001", "000002"}));
    const QString log = dialog->log()->toPlainText();
    QVERIFY2(log.contains(QStringLiteral("完成: 2 个已导入, 1 个跳过")), qPrintable(log));
    QVERIFY(log.contains(QStringLiteral("sz000003.day")));
    dialog->close();
}

QTEST_MAIN(MainWindowTest)
#include "MainWindowTest.moc"
