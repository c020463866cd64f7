// A user presses "执行": the script compiles, the data directory is walked on
// the worker thread, and the summary and the trades appear, the same as the
// command line reports for the same script and data.
#include "WidgetTestSupport.h"
#include "market/TextFile.h"
#include "ui/CandlestickView.h"
#include "ui/OrvelAnalyst.h"
#include "ui/OrvelWidget.h"
#include "ui/PicksPage.h"
#include "ui/StockListViewStrategy.h"
#include "ui/StrategyViewWidget.h"

namespace {

QString defaultScriptFor(const QString &market)
{
    return readTextFile(QStringLiteral(":qrc/default.script"))
        .replace(QStringLiteral("config.source.k.dir,data"), QStringLiteral("config.source.k.dir,") + market);
}

QString decodedFile(const QString &path) { return TextFile::decode(readTestFile(path)); }

// What a run showed: the boxes' titles and texts, the results table's rows,
// and the chart's title after clicking the first row.
struct RunSeen {
    QStringList boxes;
    QList<QStringList> rows;
    QString chartTitle;
    QStringList picks; // code and signal date of each row of 选股
    QString pickChartTitle;

    // The results window beside the main window: its trades and today's picks,
    // and the chart a click on the first of each opens.
    void see(StrategyViewWidget *results)
    {
        const QAbstractItemModel *model = results->table()->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < model->columnCount(); ++column)
                cells << model->index(row, column).data().toString();
            rows << cells;
        }
        if (!rows.isEmpty())
            clickRow(results->table(), 0);
        chartTitle = results->chart()->titleText();
        PicksPage *page = results->picksPage();
        const QStringList codes = columnTexts(page->table()->model(), 0);
        const QStringList dates = columnTexts(page->table()->model(), 1);
        for (qsizetype i = 0; i < codes.size(); ++i)
            picks << codes[i] + QLatin1Char('\t') + dates[i];
        if (!picks.isEmpty())
            clickRow(page->table(), 0);
        if (CandlestickView *chart = page->navigator()->window()) {
            pickChartTitle = chart->titleText();
            chart->close();
        }
        results->close();
    }
};

} // namespace

class RunTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void eachRunShowsTheSameTradesAsTheCommandLineAndViewShowsThemAgain();
    void theWindowStaysResponsiveDuringALongRun();
    void aScriptThatCannotRunSaysWhy();

private:
    // Presses "执行" with `script` in the editor and collects what is shown:
    // until the results window closes if the run `finishes`, else for a moment.
    void press(OrvelAnalyst &window, const QString &script, bool finishes, RunSeen &seen);

    QTemporaryDir m_workDir;
};

void RunTest::initTestCase() { QVERIFY(QDir::setCurrent(m_workDir.path())); }

void RunTest::press(OrvelAnalyst &window, const QString &script, bool finishes, RunSeen &seen)
{
    ModalWatcher watcher(noteBoxes(seen.boxes));
    child<QTextEdit>(window, "scriptEdit")->setPlainText(script);
    QTest::mouseClick(child<QPushButton>(window, "runButton"), Qt::LeftButton);
    if (!finishes)
        return QTest::qWait(300);
    QTRY_VERIFY_WITH_TIMEOUT(window.workbench()->results() && window.workbench()->results()->isVisible(),
                             120000);
    seen.see(window.workbench()->results());
}

void RunTest::eachRunShowsTheSameTradesAsTheCommandLineAndViewShowsThemAgain()
{
    if (QDir(sampleMarket()).isEmpty(QDir::Files))
        QSKIP("no sample market");
    OrvelAnalyst window;
    window.show();
    const QString script = defaultScriptFor(sampleMarket());
    // A script's `config.` line holds for its own run: the next starts from the configuration file again.
    RunSeen none;
    press(window, script + QStringLiteral("\nconfig.trade.max.count,0"), true, none);
    QCOMPARE(none.boxes, QStringList(QStringLiteral("策略数据汇总|无数据\n每日最多买入为0，没有一笔买入")));
    RunSeen seen;
    press(window, script, true, seen);

    // Back to idle; the results opened by themselves.
    QVERIFY(child<QPushButton>(window, "runButton")->isEnabled());
    QVERIFY(child<QPushButton>(window, "viewButton")->isEnabled());
    QVERIFY(child<QProgressBar>(window, "progressBar")->isHidden());
    QVERIFY2(!seen.rows.isEmpty(), "the default script trades on the sample market");
    QVERIFY(seen.chartTitle.startsWith(seen.rows[0][0]));

    QVERIFY(writeTestFile(QStringLiteral("run.script"), TextFile::encode(script, TextEncoding::Gbk)));
    QProcess cli;
    cli.start(QStringLiteral(ORVEL_CLI), {"backtest", "run.script", "--out", "cli.csv"});
    QVERIFY(cli.waitForFinished(120000));
    QCOMPARE(seen.boxes,
             QStringList(QStringLiteral("策略数据汇总|") + QString::fromUtf8(cli.readAllStandardOutput())));

    // Today's picks are the command line's screen of the same script and data.
    QProcess screen;
    screen.start(QStringLiteral(ORVEL_CLI), {"screen", "run.script"});
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

    ModalWatcher watcher(noteBoxes(seen.boxes));
    QTest::mouseClick(child<QPushButton>(window, "viewButton"), Qt::LeftButton);
    QTRY_VERIFY(window.workbench()->results() && window.workbench()->results()->isVisible());
    StrategyViewWidget *results = window.workbench()->results();
    QCOMPARE(seen.boxes.size(), 2);
    QCOMPARE(seen.boxes[1], seen.boxes[0]);
    QCOMPARE(results->table()->model()->rowCount(), seen.rows.size());
    QVERIFY(results->windowTitle().startsWith(QStringLiteral("default.script ")));
}

void RunTest::theWindowStaysResponsiveDuringALongRun()
{
    // The sample files again and again under new codes; ORVEL_UI_RUN_STOCKS=5000 for a whole market.
    const int stocks = qEnvironmentVariableIsSet("ORVEL_UI_RUN_STOCKS")
                           ? qEnvironmentVariableIntValue("ORVEL_UI_RUN_STOCKS")
                           : 2000;
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
    // Every kind of indicator on every stock, in a sale line that never holds:
    // with 2,000 stocks the run lasts long enough for the progress to be watched.
    const QString script = defaultScriptFor(market.path()) +
                           QStringLiteral("\nsale.dmi.adx,14,6,0>value,1000|kdj.j,0>value,1000|"
                                          "boll.upper,0<value,-1|macd.dea,0>value,1000|ema,60,0<value,-1");
    RunSeen seen;
    press(window, script, true, seen);
    QVERIFY2(progressSeen.size() >= 2, "the progress bar moves during the run");

    // Closing the window during the next run cancels it at once.
    auto *second = new OrvelAnalyst;
    second->show();
    child<QTextEdit>(*second, "scriptEdit")->setPlainText(script);
    // At once: the whole run may take less than a wait would.
    QTest::mouseClick(child<QPushButton>(*second, "runButton"), Qt::LeftButton);
    QVERIFY(!child<QPushButton>(*second, "runButton")->isEnabled());
    QElapsedTimer clock;
    clock.start();
    delete second;
    QVERIFY2(clock.elapsed() < 1000, qPrintable(QString::number(clock.elapsed())));
}

// Each refusal says why in a box and leaves the window ready for the next try.
void RunTest::aScriptThatCannotRunSaysWhy()
{
    const QString empty = m_workDir.filePath(QStringLiteral("empty"));
    QVERIFY(QDir().mkpath(empty));
    const QList<std::pair<QString, QString>> cases = {
        {"#买点\nbuy.close,0>ma,5,0\nbuy.closing,0>ma,5,0", "预编译出错|第:3行有错误\n未知的指标名“closing”"},
        {"config.source.k.dir," + empty + "\nbuy.close,0>ma,5,0",
         "警告|文件夹" + empty + "不存在或其中缺少股票文件"},
        {"config.trade.max.count,2\n#只有配置", "预编译出错|脚本缺少买点"},
        // Run as written, `ma,$n,0` would read as period 0; a comment's `$note` is no placeholder.
        {"# $note\nbuy.close,0>ma,$n,0\nconfig.trade.max.hold.day,$hold",
         "警告|脚本含有未取值的占位符 / the script still holds placeholders: $n, $hold\n"
         "请用 参数优化 为它们取值后运行"}};
    OrvelAnalyst window;
    for (const auto &[script, box] : cases) {
        RunSeen seen;
        press(window, script, false, seen);
        QCOMPARE(seen.boxes, QStringList(box));
        QVERIFY(child<QPushButton>(window, "runButton")->isEnabled());
        QVERIFY(child<QProgressBar>(window, "progressBar")->isHidden());
    }
}

QTEST_MAIN(RunTest)
#include "RunTest.moc"
