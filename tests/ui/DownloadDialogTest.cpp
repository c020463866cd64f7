// A user downloads quotes from the window, changes their mind halfway and
// cancels, or points the data directory at something that is not one.
#include "ui/DownloadDialog.h"
#include "../quotes/LocalQuoteServer.h"
#include "WidgetTestSupport.h"

class DownloadDialogTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(QDir::setCurrent(m_workDir.path())); }
    void cancellingStopsTheRequestInFlightAndFreesTheWindow();
    void aDataDirectoryThatCannotBeMadeIsSaidAtOnce();
    void replacingFilesOfAnotherAdjustmentIsAskedFirst();

private:
    QTemporaryDir m_workDir;
};

void DownloadDialogTest::cancellingStopsTheRequestInFlightAndFreesTheWindow()
{
    LocalQuoteServer server;
    const QString symbol = QStringLiteral("sh600000");
    server.setReply(symbol, {200, serviceReply(symbol, risingDays(8)), LocalQuoteServer::Delivery::Drip});
    qputenv("ORVEL_QUOTE_HOST", server.host().toLatin1());
    DownloadDialog dialog;
    dialog.codesEditor()->setPlainText(QStringLiteral("600000"));
    QPushButton *start = button(&dialog, QStringLiteral("开始下载"));
    QVERIFY(start);

    start->click();
    QTRY_VERIFY(!server.requests().empty());
    QVERIFY(!start->isEnabled());
    button(&dialog, QStringLiteral("取消"))->click();
    QTRY_VERIFY_WITH_TIMEOUT(start->isEnabled(), 2000);
    QVERIFY(dialog.log()->toPlainText().contains(QStringLiteral("600000: 失败, 已取消")));
    QVERIFY(dialog.log()->toPlainText().endsWith(QStringLiteral("已取消: 0 个已保存, 1 个失败")));
    QVERIFY(!QFile::exists(QStringLiteral("data/600000")));
    qunsetenv("ORVEL_QUOTE_HOST");
}

void DownloadDialogTest::aDataDirectoryThatCannotBeMadeIsSaidAtOnce()
{
    QVERIFY(QDir(QStringLiteral("data")).removeRecursively());
    QVERIFY(writeTestFile(QStringLiteral("data"), "not a folder"));
    DownloadDialog dialog;
    dialog.codesEditor()->setPlainText(QStringLiteral("600000"));
    button(&dialog, QStringLiteral("开始下载"))->click();
    QVERIFY(dialog.log()->toPlainText().endsWith(QStringLiteral("无法建立数据目录 data")));
    QVERIFY(button(&dialog, QStringLiteral("开始下载"))->isEnabled());
}

// 后复权 prices written over 不复权 ones would make every ex-rights day of
// the folder look like a jump.
void DownloadDialogTest::replacingFilesOfAnotherAdjustmentIsAskedFirst()
{
    LocalQuoteServer server;
    const QString symbol = QStringLiteral("sh600000");
    const QByteArray adjusted = serviceReply(symbol, risingDays(8));
    server.setReply(symbol, {200, adjusted});
    qputenv("ORVEL_QUOTE_HOST", server.host().toLatin1());
    QTemporaryDir target;
    const QString file = target.filePath(QStringLiteral("600000"));
    QByteArray unadjusted = adjusted;
    unadjusted.replace("hfqday", "day");
    QVERIFY(writeTestFile(file, unadjusted));
    DownloadDialog dialog;
    dialog.setTargetDir(target.path());
    QCOMPARE(dialog.findChild<QLabel *>(QStringLiteral("targetDir"))->text(),
             QDir::toNativeSeparators(target.path()));
    // A code as quote sites write it; "x" is no code and no failed download.
    dialog.codesEditor()->setPlainText(QStringLiteral("600000.SH x"));
    QStringList asked;
    QString answer = QStringLiteral("取消");
    ModalWatcher watcher(answerQuestions(asked, answer));
    QPushButton *start = button(&dialog, QStringLiteral("开始下载"));
    start->click();
    QCOMPARE(asked.size(), 1);
    QVERIFY2(asked[0].contains(QStringLiteral("1个要替换的文件是不复权数据，这次下载的是后复权数据")),
             qPrintable(asked[0]));
    QVERIFY(server.requests().empty());
    QCOMPARE(readTestFile(file), unadjusted);

    answer = QStringLiteral("仍然下载");
    start->click();
    QTRY_VERIFY_WITH_TIMEOUT(start->isEnabled() && !server.requests().empty(), 10000);
    QCOMPARE(asked.size(), 2);
    QCOMPARE(readTestFile(file), adjusted);
    QVERIFY2(dialog.log()->toPlainText().endsWith(QStringLiteral("完成: 1 个已保存, 0 个失败, 1 个代码无效")),
             qPrintable(dialog.log()->toPlainText()));
    qunsetenv("ORVEL_QUOTE_HOST");
}

QTEST_MAIN(DownloadDialogTest)
#include "DownloadDialogTest.moc"
