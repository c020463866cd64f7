// A user presses "执行": the script compiles, the data directory is walked on
// the worker thread, and the summary and the trades appear, the same as the
// command line reports for the same script and data.
#include "ModalWatcher.h"
#include "ui/OrvelAnalyst.h"
#include "ui/OrvelStockMsgBox.h"
#include "ui/RunningConfig.h"
#include "ui/StockListView.h"
#include "ui/StrategyViewWidget.h"
#include "ui/CandlestickView.h"
#include "market/TextFile.h"

#include <QDir>
#include <QProcess>
#include <QProgressBar>
#include <QTemporaryDir>
#include <QTextEdit>
#include <QtTest>

namespace {

QString sampleDataDir()
{
    for (const QString &dir : {QStringLiteral(ORVEL_SOURCE_DIR "/data"),
                               QStringLiteral(ORVEL_SHARED_DIR "/data/synthetic-market")}) {
        if (!QDir(dir).isEmpty(QDir::Files))
            return dir;
    }
    return {};
}

// The built-in script, reading its stocks from `dataDir`.
QString defaultScriptFor(const QString &dataDir)
{
    QString script = readTextFile(QStringLiteral(":qrc/default.script"));
    return script.replace(QStringLiteral("config.source.k.dir,data"), QStringLiteral("config.source.k.dir,") + dataDir);
}

QList<QStringList> tableRows(const QTableWidget *table)
{
    QList<QStringList> rows;
    for (int row = 0; row < table->rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < table->columnCount(); ++column)
            cells << table->item(row, column)->text();
        rows << cells;
    }
    return rows;
}

QString decodedFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? TextFile::decode(file.readAll()) : QString();
}

struct Box {
    QString title;
    QString text;
};

} // namespace

class RunTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void aRunShowsTheSameTradesAsTheCommandLine();
    void theWindowStaysResponsiveDuringALongRun();
    void aScriptErrorNamesItsLine();
    void aMissingDataDirectoryIsReported();
    void aScriptWithoutBuyStatementStartsNothingAndSaysNothing();

private:
    // Runs the editor's script through the run button; the boxes shown, the
    // results table's rows and the chart title after clicking the first row.
    void run(OrvelAnalyst &window, QList<Box> &boxes, QList<QStringList> &rows, QString &chartTitle);

    QTemporaryDir m_workDir;
    QString m_data;
};

void RunTest::initTestCase()
{
    QVERIFY(m_workDir.isValid());
    QVERIFY(QDir::setCurrent(m_workDir.path()));
    m_data = sampleDataDir();
}

void RunTest::init()
{
    runningConfig() = StrategyConfig();
    QFile::remove(QStringLiteral("output.csv"));
}

void RunTest::run(OrvelAnalyst &window, QList<Box> &boxes, QList<QStringList> &rows, QString &chartTitle)
{
    bool resultsClosed = false;
    ModalWatcher watcher([&](QWidget *modal) {
        if (auto *box = qobject_cast<OrvelStockMsgBox *>(modal)) {
            boxes << Box{box->windowTitle(), box->text()};
            pressButton(box, QStringLiteral("确定"));
        } else if (auto *results = qobject_cast<StrategyViewWidget *>(modal)) {
            QTableWidget *table = results->table();
            rows = tableRows(table);
            if (table->rowCount() > 0) {
                const QRect cell = table->visualItemRect(table->item(0, 0));
                QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, cell.center());
            }
            chartTitle = results->chart()->titleText();
            results->close();
            resultsClosed = true;
        } else {
            modal->close();
        }
    });
    auto *runButton = window.findChild<QPushButton *>(QStringLiteral("runButton"));
    QTest::mouseClick(runButton, Qt::LeftButton);
    QTRY_VERIFY_WITH_TIMEOUT(resultsClosed, 120000);
}

void RunTest::aRunShowsTheSameTradesAsTheCommandLine()
{
    if (m_data.isEmpty())
        QSKIP("no sample market");
    OrvelAnalyst window;
    window.show();
    const QString script = defaultScriptFor(m_data);
    window.findChild<QTextEdit *>(QStringLiteral("scriptEdit"))->setPlainText(script);

    QList<Box> boxes;
    QList<QStringList> rows;
    QString chartTitle;
    run(window, boxes, rows, chartTitle);

    // Back to idle, results shown once, view button still off.
    QVERIFY(window.findChild<QPushButton *>(QStringLiteral("runButton"))->isEnabled());
    QVERIFY(!window.findChild<QPushButton *>(QStringLiteral("viewButton"))->isEnabled());
    QVERIFY(window.findChild<QProgressBar *>(QStringLiteral("progressBar"))->isHidden());
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes[0].title, QStringLiteral("策略数据汇总"));
    QVERIFY2(!rows.isEmpty(), "the default script trades on the sample market");
    QVERIFY(chartTitle.startsWith(rows[0][0]));

    QFile scriptFile(QStringLiteral("run.script"));
    QVERIFY(scriptFile.open(QIODevice::WriteOnly));
    scriptFile.write(TextFile::encode(script, TextEncoding::Gbk));
    scriptFile.close();
    QProcess cli;
    cli.start(QStringLiteral(ORVEL_CLI), {QStringLiteral("backtest"), scriptFile.fileName(), QStringLiteral("--out"),
                                          QStringLiteral("cli.csv")});
    QVERIFY(cli.waitForFinished(120000));
    QCOMPARE(cli.exitCode(), 0);
    QCOMPARE(boxes[0].text, QString::fromUtf8(cli.readAllStandardOutput()));

    const QString csv = decodedFile(QStringLiteral("output.csv"));
    QCOMPARE(csv, decodedFile(QStringLiteral("cli.csv")));
    const QStringList lines = csv.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QCOMPARE(rows.size(), lines.size());
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QStringList fields = lines[i].split(QLatin1Char(','));
        const QStringList &row = rows[i];
        QCOMPARE(row.mid(0, 6), fields.mid(0, 6)); // code, dates, prices, days held
        QCOMPARE(row[7], fields[6]);               // sale type
    }
}

void RunTest::theWindowStaysResponsiveDuringALongRun()
{
    if (m_data.isEmpty())
        QSKIP("no sample market");
    // A market of a few hundred stocks: the sample files under new codes.
    QDir market(m_workDir.filePath(QStringLiteral("market")));
    QVERIFY(market.mkpath(QStringLiteral(".")));
    const QStringList sample = QDir(m_data).entryList(QDir::Files);
    for (int i = 0; i < 600; ++i) {
        const QString code = QStringLiteral("%1").arg(i, 6, 10, QLatin1Char('0'));
        QVERIFY(QFile::copy(QDir(m_data).filePath(sample[i % sample.size()]), market.filePath(code)));
    }
    OrvelAnalyst window;
    window.show();
    window.findChild<QTextEdit *>(QStringLiteral("scriptEdit"))->setPlainText(defaultScriptFor(market.path()));
    auto *runButton = window.findChild<QPushButton *>(QStringLiteral("runButton"));
    auto *progress = window.findChild<QProgressBar *>(QStringLiteral("progressBar"));

    // While the worker runs, this timer only fires if the interface thread
    // keeps its event loop going.
    QSet<int> progressSeen;
    int ticksWhileRunning = 0;
    bool sawRunningState = false;
    QTimer sampler;
    connect(&sampler, &QTimer::timeout, [&] {
        if (!runButton->isEnabled()) {
            ++ticksWhileRunning;
            sawRunningState = sawRunningState || progress->isVisible();
            progressSeen.insert(progress->value());
        }
    });
    sampler.start(1);

    QList<Box> boxes;
    QList<QStringList> rows;
    QString chartTitle;
    run(window, boxes, rows, chartTitle);
    QVERIFY(sawRunningState);
    QVERIFY2(ticksWhileRunning >= 3, qPrintable(QString::number(ticksWhileRunning)));
    QVERIFY2(progressSeen.size() >= 2, "the progress bar moves during the run");
    QVERIFY(progress->isHidden());
}

void RunTest::aScriptErrorNamesItsLine()
{
    OrvelAnalyst window;
    window.findChild<QTextEdit *>(QStringLiteral("scriptEdit"))
        ->setPlainText(QStringLiteral("#买点\nbuy.close,0>ma,5,0\nbuy.closing,0>ma,5,0"));
    QList<Box> boxes;
    ModalWatcher watcher([&](QWidget *modal) {
        auto *box = qobject_cast<OrvelStockMsgBox *>(modal);
        boxes << Box{modal->windowTitle(), box ? box->text() : QString()};
        modal->close();
    });
    QTest::mouseClick(window.findChild<QPushButton *>(QStringLiteral("runButton")), Qt::LeftButton);
    QTRY_COMPARE(boxes.size(), 1);
    QCOMPARE(boxes[0].title, QStringLiteral("预编译出错"));
    QCOMPARE(boxes[0].text, QStringLiteral("第:3行有错误"));
    QVERIFY(window.findChild<QPushButton *>(QStringLiteral("runButton"))->isEnabled());
    QVERIFY(!QFile::exists(QStringLiteral("output.csv")));
}

void RunTest::aMissingDataDirectoryIsReported()
{
    OrvelAnalyst window;
    const QString empty = m_workDir.filePath(QStringLiteral("empty"));
    QVERIFY(QDir().mkpath(empty));
    window.findChild<QTextEdit *>(QStringLiteral("scriptEdit"))
        ->setPlainText(QStringLiteral("config.source.k.dir,%1\nbuy.close,0>ma,5,0").arg(empty));
    QList<Box> boxes;
    ModalWatcher watcher([&](QWidget *modal) {
        auto *box = qobject_cast<OrvelStockMsgBox *>(modal);
        boxes << Box{modal->windowTitle(), box ? box->text() : QString()};
        pressButton(modal, QStringLiteral("确定"));
    });
    QTest::mouseClick(window.findChild<QPushButton *>(QStringLiteral("runButton")), Qt::LeftButton);
    QTRY_COMPARE(boxes.size(), 1);
    QCOMPARE(boxes[0].title, QStringLiteral("警告"));
    QCOMPARE(boxes[0].text, QStringLiteral("文件夹%1不存在或其中缺少股票文件").arg(empty));
    QVERIFY(window.findChild<QPushButton *>(QStringLiteral("runButton"))->isEnabled());
    QVERIFY(window.findChild<QProgressBar *>(QStringLiteral("progressBar"))->isHidden());
}

void RunTest::aScriptWithoutBuyStatementStartsNothingAndSaysNothing()
{
    OrvelAnalyst window;
    window.findChild<QTextEdit *>(QStringLiteral("scriptEdit"))
        ->setPlainText(QStringLiteral("config.trade.max.count,2\n#只有配置"));
    ModalWatcher watcher([](QWidget *modal) { modal->close(); });
    QTest::mouseClick(window.findChild<QPushButton *>(QStringLiteral("runButton")), Qt::LeftButton);
    QTest::qWait(300);
    QCOMPARE(watcher.seen(), 0);
    QVERIFY(window.findChild<QPushButton *>(QStringLiteral("runButton"))->isEnabled());
    // The configuration lines still took effect.
    QCOMPARE(runningConfig().maxCount, 2);
}

QTEST_MAIN(RunTest)
#include "RunTest.moc"
