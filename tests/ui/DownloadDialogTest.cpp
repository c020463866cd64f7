// A user downloads quotes from the window, changes their mind halfway and
// cancels, or points the data directory at something that is not one.
#include "ui/DownloadDialog.h"
#include "../quotes/LocalQuoteServer.h"
#include "WidgetTestSupport.h"

#include <QDir>
#include <QFile>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QtTest>

class DownloadDialogTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(QDir::setCurrent(m_workDir.path())); }
    void cancellingStopsTheRequestInFlightAndFreesTheWindow();
    void aDataDirectoryThatCannotBeMadeIsSaidAtOnce();

private:
    QPushButton *button(DownloadDialog &dialog, const QString &text)
    {
        for (QPushButton *b : dialog.findChildren<QPushButton *>()) {
            if (b->text() == text)
                return b;
        }
        return nullptr;
    }

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
    QPushButton *start = button(dialog, QStringLiteral("开始下载"));
    QVERIFY(start);

    start->click();
    QTRY_VERIFY(!server.requests().empty());
    QVERIFY(!start->isEnabled());
    button(dialog, QStringLiteral("取消"))->click();
    QTRY_VERIFY_WITH_TIMEOUT(start->isEnabled(), 2000);
    QVERIFY(dialog.log()->toPlainText().contains(QStringLiteral("600000: 失败, 已取消")));
    QVERIFY(dialog.log()->toPlainText().endsWith(QStringLiteral("已取消: 0 个已保存, 1 个失败")));
    QVERIFY(!QFile::exists(QStringLiteral("data/600000")));
    qunsetenv("ORVEL_QUOTE_HOST");
}

void DownloadDialogTest::aDataDirectoryThatCannotBeMadeIsSaidAtOnce()
{
    QFile blocker(QStringLiteral("data"));
    QVERIFY(QDir(QStringLiteral("data")).removeRecursively());
    QVERIFY(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    DownloadDialog dialog;
    dialog.codesEditor()->setPlainText(QStringLiteral("600000"));
    button(dialog, QStringLiteral("开始下载"))->click();
    QVERIFY(dialog.log()->toPlainText().endsWith(QStringLiteral("无法建立数据目录 data")));
    QVERIFY(button(dialog, QStringLiteral("开始下载"))->isEnabled());
}

QTEST_MAIN(DownloadDialogTest)
#include "DownloadDialogTest.moc"
