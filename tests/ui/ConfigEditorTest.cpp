// A user edits "config.conf" from the menu "配置 / 数据配置".
#include "ModalWatcher.h"
#include "ui/OrvelAnalyst.h"
#include "ui/RunningConfig.h"
#include "ui/StockConfigWidget.h"
#include "market/TextFile.h"

#include <QMenuBar>
#include <QTemporaryDir>
#include <QTextEdit>
#include <QtTest>

namespace {

const QString kConfigFile = QStringLiteral("config.conf");

QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class ConfigEditorTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void confirmingSavesAppliesAndReloads();
    void closingTheWindowChangesNothing();
    void anEmptiedFileOpensWithTheDefaultsAgain();

private:
    // Opens the editor through the main window's menu; `edit` gets the open
    // dialog and must close it.
    void openEditor(const std::function<void(StockConfigWidget *)> &edit);

    std::unique_ptr<QTemporaryDir> m_workDir;
};

void ConfigEditorTest::init()
{
    m_workDir = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir::setCurrent(m_workDir->path()));
    runningConfig() = StrategyConfig();
}

void ConfigEditorTest::cleanup() { QDir::setCurrent(QDir::tempPath()); }

void ConfigEditorTest::openEditor(const std::function<void(StockConfigWidget *)> &edit)
{
    OrvelAnalyst window;
    QAction *entry = nullptr;
    for (QAction *top : window.menuBar()->actions()) {
        if (top->text() == QStringLiteral("配置"))
            entry = top->menu()->actions().value(0);
    }
    QVERIFY(entry && entry->text() == QStringLiteral("数据配置"));
    ModalWatcher watcher([&](QWidget *modal) {
        auto *editor = qobject_cast<StockConfigWidget *>(modal);
        QVERIFY(editor);
        QCOMPARE(editor->windowTitle(), QStringLiteral("基础配置"));
        QCOMPARE(editor->size(), QSize(360, 240));
        edit(editor);
        if (editor->isVisible()) // a failed check above must not leave the test waiting
            editor->close();
    });
    entry->trigger();
    QCOMPARE(watcher.seen(), 1);
}

void ConfigEditorTest::confirmingSavesAppliesAndReloads()
{
    // The built-in file has CR LF line ends; the editor keeps lines, not ends.
    const QString builtIn = readTextFile(QStringLiteral(":qrc/config.conf")).remove(QLatin1Char('\r'));
    QVERIFY(!builtIn.isEmpty());
    const QString edited = builtIn + QStringLiteral("\n#单日最多两只\nconfig.trade.max.count,2\nconfig.trade.max.lost,-5.5");
    openEditor([&](StockConfigWidget *editor) {
        QCOMPARE(editor->editor()->toPlainText(), builtIn); // no file yet: the defaults
        editor->editor()->setPlainText(edited);
        pressButton(editor, QStringLiteral("确定"));
    });
    QCOMPARE(fileBytes(kConfigFile), TextFile::encode(edited, TextEncoding::Gbk));
    QCOMPARE(runningConfig().maxCount, 2);
    QCOMPARE(runningConfig().maxLost, -5.5f);

    // The next time the editor shows the saved file.
    openEditor([&](StockConfigWidget *editor) {
        QCOMPARE(editor->editor()->toPlainText(), edited);
        editor->close();
    });
}

void ConfigEditorTest::closingTheWindowChangesNothing()
{
    openEditor([](StockConfigWidget *editor) {
        editor->editor()->setPlainText(QStringLiteral("config.trade.max.count,7"));
        editor->close();
    });
    QVERIFY(!QFile::exists(kConfigFile));
    QCOMPARE(runningConfig().maxCount, StrategyConfig().maxCount);
}

void ConfigEditorTest::anEmptiedFileOpensWithTheDefaultsAgain()
{
    openEditor([](StockConfigWidget *editor) {
        editor->editor()->clear();
        pressButton(editor, QStringLiteral("确定"));
    });
    QVERIFY(QFile::exists(kConfigFile));
    QCOMPARE(QFileInfo(kConfigFile).size(), 0);
    openEditor([](StockConfigWidget *editor) {
        QCOMPARE(editor->editor()->toPlainText(),
                 readTextFile(QStringLiteral(":qrc/config.conf")).remove(QLatin1Char('\r')));
        editor->close();
    });
}

QTEST_MAIN(ConfigEditorTest)
#include "ConfigEditorTest.moc"
