// A user presses "执行": the script compiles, the data directory is walked on
// the worker thread, and the summary and the trades appear, the same as the
// command line reports for the same script and data.
#include "WidgetTestSupport.h"
#include "market/TextFile.h"
#include "ui/CandlestickView.h"
#include "ui/OrvelAnalyst.h"
#include "ui/OrvelStockMsgBox.h"
#include "ui/StockListView.h"
#include "ui/StrategyViewWidget.h"

#include <QProcess>
#include <QProgressBar>
#include <QTemporaryDir>
#include <QTextEdit>
#include <QtTest>

namespace {

QString sampleMarket()
{
    const QString bundled = QStringLiteral(ORVEL_SOURCE_DIR "/data");
    return QDir(bundled).isEmpty(QDir::Files) ? QStringLiteral(ORVEL_SHARED_DIR "/data/synthetic-market")
                                              : bundled;
}

QString defaultScriptFor(const QString &market)
{
    return readTextFile(QStringLiteral(":qrc/default.script"))
        .replace(QStringLiteral("config.source.k.dir,data"), QStringLiteral("config.source.k.dir,") + market);
}

QString decodedFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? TextFile::decode(file.readAll()) : QString();
}

// What a run showed: the boxes' titles and texts, the results table's rows,
// and the chart's title after clicking the first row.
struct RunSeen {
    QStringList boxes;
    QList<QStringList> rows;
    QString chartTitle;
    bool resultsClosed = false;

    void see(QWidget *modal)
    {
        if (auto *box = qobject_cast<OrvelStockMsgBox *>(modal)) {
            boxes << box->windowTitle() + QLatin1Char('|') + box->text();
            return pressButton(box, QStringLiteral("确定"));
        }
        auto *results = qobject_cast<StrategyViewWidget *>(modal);
        QVERIFY(results);
        QTableWidget *table = results->table();
        for (int row = 0; row < table->rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < table->columnCount(); ++column)
                cells << table->item(row, column)->text();
            rows << cells;
        }
        if (!rows.isEmpty())
            QTest::mouseClick(table->viewport(), Qt::LeftButton, {},
                              table->visualItemRect(table->item(0, 0)).center());
        chartTitle = results->chart()->titleText();
        results->close();
        resultsClosed = true;
    }
};

} // namespace

class RunTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void aRunShowsTheSameTradesAsTheCommandLine();
    void theWindowStaysResponsiveDuringALongRun();
    void aScriptErrorNamesItsLine();
    void aMissingDataDirectoryIsReported();
    void aScriptWithoutBuyStatementIsRefused();

private:
    // Presses "执行" with `script` in the editor and collects what is shown:
    // until the results window closes if the run `finishes`, else for a moment.
    void press(OrvelAnalyst &window, const QString &script, bool finishes, RunSeen &seen);

    QTemporaryDir m_workDir;
};

void RunTest::initTestCase() { QVERIFY(QDir::setCurrent(m_workDir.path())); }

void RunTest::press(OrvelAnalyst &window, const QString &script, bool finishes, RunSeen &seen)
{
    ModalWatcher watcher([&seen](QWidget *modal) { seen.see(modal); });
    child<QTextEdit>(window, "scriptEdit")->setPlainText(script);
    QTest::mouseClick(child<QPushButton>(window, "runButton"), Qt::LeftButton);
    if (finishes)
        QTRY_VERIFY_WITH_TIMEOUT(seen.resultsClosed, 120000);
    else
        QTest::qWait(300);
}

void RunTest::aRunShowsTheSameTradesAsTheCommandLine()
{
    if (QDir(sampleMarket()).isEmpty(QDir::Files))
        QSKIP("no sample market");
    OrvelAnalyst window;
    window.show();
    const QString script = defaultScriptFor(sampleMarket());
    RunSeen seen;
    press(window, script, true, seen);

    // Back to idle; the results opened by themselves, and "查看" shows them again.
    QVERIFY(child<QPushButton>(window, "runButton")->isEnabled());
    QVERIFY(child<QPushButton>(window, "viewButton")->isEnabled());
    QVERIFY(child<QProgressBar>(window, "progressBar")->isHidden());
    QVERIFY2(!seen.rows.isEmpty(), "the default script trades on the sample market");
    QVERIFY(seen.chartTitle.startsWith(seen.rows[0][0]));

    QFile scriptFile(QStringLiteral("run.script"));
    QVERIFY(scriptFile.open(QIODevice::WriteOnly));
    scriptFile.write(TextFile::encode(script, TextEncoding::Gbk));
    scriptFile.close();
    QProcess cli;
    cli.start(QStringLiteral(ORVEL_CLI), {"backtest", scriptFile.fileName(), "--out", "cli.csv"});
    QVERIFY(cli.waitForFinished(120000));
    QCOMPARE(seen.boxes,
             QStringList(QStringLiteral("策略数据汇总|") + QString::fromUtf8(cli.readAllStandardOutput())));

    const QString csv = decodedFile(QStringLiteral("output.csv"));
    QCOMPARE(csv, decodedFile(QStringLiteral("cli.csv")));
    const QStringList lines = csv.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QCOMPARE(seen.rows.size(), lines.size());
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QStringList fields = lines[i].split(QLatin1Char(','));
        QCOMPARE(seen.rows[i].mid(0, 6), fields.mid(0, 6)); // code, dates, prices, days held
        QCOMPARE(seen.rows[i][7], fields[6]);               // sale type
    }
}

void RunTest::theWindowStaysResponsiveDuringALongRun()
{
    // The sample files again and again under new codes; ORVEL_UI_RUN_STOCKS=5000 for a whole market.
    const int stocks = qEnvironmentVariableIsSet("ORVEL_UI_RUN_STOCKS")
                           ? qEnvironmentVariableIntValue("ORVEL_UI_RUN_STOCKS")
                           : 600;
    const QDir sample(sampleMarket());
    if (sample.isEmpty(QDir::Files))
        QSKIP("no sample market");
    const QStringList files = sample.entryList(QDir::Files);
    QDir market(m_workDir.filePath(QStringLiteral("market")));
    QVERIFY(market.mkpath(QStringLiteral(".")));
    for (int i = 0; i < stocks; ++i)
        QVERIFY(QFile::copy(sample.filePath(files[i % files.size()]),
                            market.filePath(QString::asprintf("%06d", i))));

    OrvelAnalyst window;
    window.show();
    auto *runButton = child<QPushButton>(window, "runButton");
    auto *progress = child<QProgressBar>(window, "progressBar");
    // This timer only fires while the run is on if the interface thread's loop keeps going.
    QSet<int> progressSeen;
    QTimer sampler;
    connect(&sampler, &QTimer::timeout, [&] {
        if (!runButton->isEnabled() && progress->isVisible())
            progressSeen.insert(progress->value());
    });
    sampler.start(1);
    RunSeen seen;
    press(window, defaultScriptFor(market.path()), true, seen);
    QVERIFY2(progressSeen.size() >= 2, "the progress bar moves during the run");
}

void RunTest::aScriptErrorNamesItsLine()
{
    OrvelAnalyst window;
    RunSeen seen;
    press(window, QStringLiteral("#买点\nbuy.close,0>ma,5,0\nbuy.closing,0>ma,5,0"), false, seen);
    QCOMPARE(seen.boxes, QStringList(QStringLiteral("预编译出错|第:3行有错误")));
    QVERIFY(child<QPushButton>(window, "runButton")->isEnabled());
}

void RunTest::aMissingDataDirectoryIsReported()
{
    OrvelAnalyst window;
    const QString empty = m_workDir.filePath(QStringLiteral("empty"));
    QVERIFY(QDir().mkpath(empty));
    RunSeen seen;
    press(window, QStringLiteral("config.source.k.dir,%1\nbuy.close,0>ma,5,0").arg(empty), false, seen);
    QCOMPARE(seen.boxes, QStringList(QStringLiteral("警告|文件夹%1不存在或其中缺少股票文件").arg(empty)));
    QVERIFY(child<QPushButton>(window, "runButton")->isEnabled());
    QVERIFY(child<QProgressBar>(window, "progressBar")->isHidden());
}

void RunTest::aScriptWithoutBuyStatementIsRefused()
{
    OrvelAnalyst window;
    RunSeen seen;
    press(window, QStringLiteral("config.trade.max.count,2\n#只有配置"), false, seen);
    QCOMPARE(seen.boxes, QStringList(QStringLiteral("预编译出错|脚本缺少买点")));
    QVERIFY(child<QPushButton>(window, "runButton")->isEnabled());
}

QTEST_MAIN(RunTest)
#include "RunTest.moc"
