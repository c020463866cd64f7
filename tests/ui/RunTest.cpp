// A user presses "执行": the script compiles, the data directory is walked on
// the worker thread, and the summary and the trades appear, the same as the
// command line reports for the same script and data.
#include "WidgetTestSupport.h"
#include "market/TextFile.h"
#include "ui/CandlestickView.h"
#include "ui/OrvelAnalyst.h"
#include "ui/OrvelStockMsgBox.h"
#include "ui/OrvelWidget.h"
#include "ui/PicksPage.h"
#include "ui/StockListViewStrategy.h"
#include "ui/StrategyViewWidget.h"
#include "ui/TableCsvExport.h"

#include <QElapsedTimer>
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

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
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
    QStringList picks; // code and signal date of each row of 选股
    QString pickChartTitle;
    bool exported = false; // the trade table written as "trades.csv" for spreadsheets
    bool resultsClosed = false;

    void see(QWidget *modal)
    {
        auto *box = qobject_cast<OrvelStockMsgBox *>(modal);
        QVERIFY(box);
        boxes << box->windowTitle() + QLatin1Char('|') + box->text();
        pressButton(box, QStringLiteral("确定"));
    }

    // The picks' rows, and the chart a click on the first opens.
    void seePicks(PicksPage *page)
    {
        QTableView *table = page->table();
        const QAbstractItemModel *model = table->model();
        for (int row = 0; row < model->rowCount(); ++row)
            picks << model->index(row, 0).data().toString() + QLatin1Char('\t') +
                         model->index(row, 1).data().toString();
        if (picks.isEmpty())
            return;
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {},
                          table->visualRect(model->index(0, 0)).center());
        if (CandlestickView *chart = page->navigator()->window()) {
            pickChartTitle = chart->titleText();
            chart->close();
        }
    }

    // The results window beside the main window: its rows, and the chart of the first.
    void see(StrategyViewWidget *results)
    {
        QTableView *table = results->table();
        const QAbstractItemModel *model = table->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < model->columnCount(); ++column)
                cells << model->index(row, column).data().toString();
            rows << cells;
        }
        if (!rows.isEmpty())
            QTest::mouseClick(table->viewport(), Qt::LeftButton, {},
                              table->visualRect(model->index(0, 0)).center());
        chartTitle = results->chart()->titleText();
        exported = TableCsvExport::write(*model, QStringLiteral("trades.csv")).isEmpty();
        seePicks(results->picksPage());
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
    void eachRunStartsFromTheConfigurationFileAndViewShowsItAgain();
    void aScriptErrorNamesItsLine();
    void aMissingDataDirectoryIsReported();
    void aScriptWithoutBuyStatementIsRefused();
    void aScriptWithPlaceholdersIsSentToTheSearch();

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
    if (!finishes)
        return QTest::qWait(300);
    QTRY_VERIFY_WITH_TIMEOUT(window.workbench()->results() && window.workbench()->results()->isVisible(),
                             120000);
    seen.see(window.workbench()->results());
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

    // The spreadsheet's copy of the table: a header, then the rows as shown.
    QVERIFY(seen.exported);
    const QByteArray sheetBytes = readAll(QStringLiteral("trades.csv"));
    QVERIFY(sheetBytes.startsWith("\xEF\xBB\xBF"));
    const QStringList sheet =
        QString::fromUtf8(sheetBytes.mid(3)).split(QStringLiteral("\r\n"), Qt::SkipEmptyParts);
    QCOMPARE(sheet.first(),
             QStringLiteral("代码,买入日期,买入价位,卖出日期,卖出价位,持股天数,涨幅,卖出类型"));
    QCOMPARE(sheet.size(), seen.rows.size() + 1);
    QCOMPARE(sheet.last(), seen.rows.last().join(QLatin1Char(',')));

    // Today's picks are the command line's screen of the same script and data.
    QProcess screen;
    screen.start(QStringLiteral(ORVEL_CLI), {"screen", scriptFile.fileName()});
    QVERIFY(screen.waitForFinished(120000));
    const QString screened = QString::fromUtf8(screen.readAllStandardOutput());
    QCOMPARE(seen.picks.join(QLatin1Char('\n')), screened.trimmed());
    QVERIFY2(!seen.picks.isEmpty(), "the default script picks on the sample market");
    QVERIFY(seen.pickChartTitle.startsWith(seen.picks[0].left(6)));

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

    // Closing the window during the next run cancels it at once.
    auto *second = new OrvelAnalyst;
    second->show();
    child<QTextEdit>(*second, "scriptEdit")->setPlainText(defaultScriptFor(market.path()));
    QTest::mouseClick(child<QPushButton>(*second, "runButton"), Qt::LeftButton);
    QTest::qWait(50);
    QVERIFY(!child<QPushButton>(*second, "runButton")->isEnabled());
    QElapsedTimer clock;
    clock.start();
    delete second;
    QVERIFY2(clock.elapsed() < 1000, qPrintable(QString::number(clock.elapsed())));
}

void RunTest::eachRunStartsFromTheConfigurationFileAndViewShowsItAgain()
{
    if (QDir(sampleMarket()).isEmpty(QDir::Files))
        QSKIP("no sample market");
    OrvelAnalyst window;
    window.show();
    RunSeen none;
    press(window, defaultScriptFor(sampleMarket()) + QStringLiteral("\nconfig.trade.max.count,0"), true,
          none);
    QCOMPARE(none.boxes, QStringList(QStringLiteral("策略数据汇总|无数据\n每日最多买入为0，没有一笔买入")));
    RunSeen again;
    press(window, defaultScriptFor(sampleMarket()), true, again); // no longer limited to none a day
    QVERIFY(!again.rows.isEmpty());

    ModalWatcher watcher([&again](QWidget *modal) { again.see(modal); });
    QTest::mouseClick(child<QPushButton>(window, "viewButton"), Qt::LeftButton);
    QTRY_VERIFY(window.workbench()->results() && window.workbench()->results()->isVisible());
    QCOMPARE(again.boxes.size(), 2);
    QCOMPARE(again.boxes[1], again.boxes[0]);
    QCOMPARE(window.workbench()->results()->table()->model()->rowCount(), again.rows.size());
    QVERIFY(window.workbench()->results()->windowTitle().startsWith(QStringLiteral("default.script ")));
}

void RunTest::aScriptErrorNamesItsLine()
{
    OrvelAnalyst window;
    RunSeen seen;
    press(window, QStringLiteral("#买点\nbuy.close,0>ma,5,0\nbuy.closing,0>ma,5,0"), false, seen);
    QCOMPARE(seen.boxes, QStringList(QStringLiteral("预编译出错|第:3行有错误\n未知的指标名“closing”")));
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

void RunTest::aScriptWithPlaceholdersIsSentToTheSearch()
{
    OrvelAnalyst window;
    RunSeen seen;
    press(window, QStringLiteral("# $note\nbuy.close,0>ma,$n,0\nconfig.trade.max.hold.day,$hold"), false, seen);
    QCOMPARE(seen.boxes.size(), 1);
    QVERIFY(seen.boxes[0].startsWith(QStringLiteral("警告|")));
    QVERIFY(seen.boxes[0].contains(QStringLiteral("$n, $hold")));
    QVERIFY(!seen.boxes[0].contains(QStringLiteral("$note")));
    QVERIFY(seen.boxes[0].contains(QStringLiteral("参数优化")));
    QVERIFY(child<QProgressBar>(window, "progressBar")->isHidden());
}

QTEST_MAIN(RunTest)
#include "RunTest.moc"
