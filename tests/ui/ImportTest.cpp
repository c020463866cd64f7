// A user brings a terminal's day files into the program's data folder.
#include "../DayFileSupport.h"
#include "WidgetTestSupport.h"
#include "ui/ImportDialog.h"
#include "ui/OrvelAnalyst.h"

class ImportTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(QDir::setCurrent(m_workDir.path())); }
    void importingDayFilesFillsTheDataFolderWithoutBlockingTheWindow();

private:
    QTemporaryDir m_workDir;
};

void ImportTest::importingDayFilesFillsTheDataFolderWithoutBlockingTheWindow()
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

QTEST_MAIN(ImportTest)
#include "ImportTest.moc"
