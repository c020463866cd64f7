// A user opens the program, looks around its menus, imports and exports
// scripts and asks for help.
#include "ModalWatcher.h"
#include "ui/OrvelAboutDlg.h"
#include "ui/OrvelAnalyst.h"
#include "market/TextFile.h"

#include <QDesktopServices>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QProgressBar>
#include <QTemporaryDir>
#include <QTextEdit>
#include <QTranslator>
#include <QtTest>

namespace {

QAction *menuAction(QMainWindow &window, const QString &menu, const QString &text)
{
    for (QAction *top : window.menuBar()->actions()) {
        if (top->text() != menu)
            continue;
        for (QAction *action : top->menu()->actions()) {
            if (action->text() == text)
                return action;
        }
    }
    return nullptr;
}

void writeGbk(const QString &path, const QString &text)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(TextFile::encode(text, TextEncoding::Gbk));
}

} // namespace

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
    void initTestCase();
    void theWindowOpensWithTitleMenusAndTheDefaultScript();
    void importingTakesOnlyScriptsLongerThanTwentyCharacters();
    void exportingWritesTheEditorTextAsGbk();
    void helpOpensLocalPagesAndAboutShowsTheVersion();
    void qtDialogsSpeakChinese();

private:
    // Answers the file dialog the menu action opens with `path`.
    void chooseFile(QAction *action, const QString &path);

    QTemporaryDir m_workDir;
};

void MainWindowTest::initTestCase()
{
    QVERIFY(m_workDir.isValid());
    QVERIFY(QDir::setCurrent(m_workDir.path()));
}

void MainWindowTest::chooseFile(QAction *action, const QString &path)
{
    QVERIFY(action);
    QString title;
    ModalWatcher watcher([&](QWidget *modal) {
        auto *dialog = qobject_cast<QFileDialog *>(modal);
        title = modal->windowTitle();
        if (!dialog) {
            modal->close();
            return;
        }
        // Typed into the file name box, as a user would.
        auto *fileName = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        QVERIFY(fileName);
        fileName->setText(path);
        static_cast<QDialog *>(dialog)->accept(); // as "Open" or "Save" does
    });
    action->trigger();
    QCOMPARE(watcher.seen(), 1);
    QCOMPARE(title, action->text());
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
    QCOMPARE(menus, (QStringList{"文件/导入脚本/导出脚本/关闭", "配置/数据配置", "帮助/疑问/帮助/关于"}));

    const QString script = window.findChild<QTextEdit *>(QStringLiteral("scriptEdit"))->toPlainText();
    QVERIFY(script.contains(QStringLiteral("buy.close,-1<ma,5,-1")));
    QVERIFY(script.contains(QStringLiteral("1.7.0.1")));
    QVERIFY(!script.contains(QStringLiteral("VERSION#")));
    QVERIFY(window.findChild<QPushButton *>(QStringLiteral("runButton"))->isEnabled());
    QVERIFY(!window.findChild<QPushButton *>(QStringLiteral("viewButton"))->isEnabled());
    QVERIFY(window.findChild<QProgressBar *>(QStringLiteral("progressBar"))->isHidden());

    menuAction(window, QStringLiteral("文件"), QStringLiteral("关闭"))->trigger();
    QVERIFY(!window.isVisible());
}

void MainWindowTest::importingTakesOnlyScriptsLongerThanTwentyCharacters()
{
    OrvelAnalyst window;
    window.show();
    auto *editor = window.findChild<QTextEdit *>(QStringLiteral("scriptEdit"));
    const QString original = editor->toPlainText();
    QAction *import = menuAction(window, QStringLiteral("文件"), QStringLiteral("导入脚本"));

    const QString twenty = QStringLiteral("buy.close,0>ma,5,0\n#"); // 20 characters
    QCOMPARE(twenty.size(), 20);
    writeGbk(m_workDir.filePath(QStringLiteral("short.script")), twenty);
    chooseFile(import, m_workDir.filePath(QStringLiteral("short.script")));
    QCOMPARE(editor->toPlainText(), original);

    const QString twentyOne = QStringLiteral("#线\nbuy.close,0>ma,5,0"); // 21 characters, Chinese included
    QCOMPARE(twentyOne.size(), 21);
    writeGbk(m_workDir.filePath(QStringLiteral("long.script")), twentyOne);
    chooseFile(import, m_workDir.filePath(QStringLiteral("long.script")));
    QCOMPARE(editor->toPlainText(), twentyOne);

    // A file that cannot be read changes nothing.
    window.importScript(m_workDir.filePath(QStringLiteral("missing.script")));
    QCOMPARE(editor->toPlainText(), twentyOne);
}

void MainWindowTest::exportingWritesTheEditorTextAsGbk()
{
    OrvelAnalyst window;
    window.show();
    const QString text = QStringLiteral("#测试\nbuy.k.旭日东升,0");
    window.findChild<QTextEdit *>(QStringLiteral("scriptEdit"))->setPlainText(text);
    const QString path = m_workDir.filePath(QStringLiteral("out.script"));
    chooseFile(menuAction(window, QStringLiteral("文件"), QStringLiteral("导出脚本")), path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), TextFile::encode(text, TextEncoding::Gbk));
}

void MainWindowTest::helpOpensLocalPagesAndAboutShowsTheVersion()
{
    OrvelAnalyst window;
    UrlCatcher browser;
    QDesktopServices::setUrlHandler(QStringLiteral("file"), &browser, "open");
    menuAction(window, QStringLiteral("帮助"), QStringLiteral("疑问"))->trigger();
    menuAction(window, QStringLiteral("帮助"), QStringLiteral("帮助"))->trigger();
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));

    QCOMPARE(browser.urls.size(), 2);
    QCOMPARE(QFileInfo(browser.urls[1].toLocalFile()).fileName(), QStringLiteral("readme.htm"));
    QVERIFY(browser.urls[0] != browser.urls[1]);
    for (const QUrl &url : browser.urls) {
        QFile page(url.toLocalFile());
        QVERIFY2(page.open(QIODevice::ReadOnly), qPrintable(url.toString()));
        QVERIFY(page.readAll().contains("<title>"));
    }

    QString aboutText;
    ModalWatcher watcher([&](QWidget *modal) {
        for (QLabel *label : modal->findChildren<QLabel *>())
            aboutText += label->text();
        pressButton(modal, QStringLiteral("确定"));
    });
    menuAction(window, QStringLiteral("帮助"), QStringLiteral("关于"))->trigger();
    QVERIFY(aboutText.contains(QStringLiteral("Orvel股票量化分析软件")));
    QVERIFY(aboutText.contains(QStringLiteral("1.7.0.1")));
}

void MainWindowTest::qtDialogsSpeakChinese()
{
    if (!QFile::exists(QStringLiteral(":qrc/qt_zh_CN.qm")))
        QSKIP("Qt's Chinese catalogues were not found at build time");
    QTranslator translator;
    QVERIFY(translator.load(QStringLiteral(":qrc/qt_zh_CN.qm")));
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QCOMPARE(QCoreApplication::translate("QFileDialog", "Open"), QStringLiteral("打开"));
    QCoreApplication::removeTranslator(&translator);
}

QTEST_MAIN(MainWindowTest)
#include "MainWindowTest.moc"
