// A user reads the results window: sorts the trades, clicks a trade to see it
// on its stock's chart, and reads and exports the 统计 page.
#include "WidgetTestSupport.h"
#include "market/TextFile.h"
#include "report/ReportHtml.h"
#include "ui/CandlestickView.h"
#include "ui/LoadedStocks.h"
#include "ui/ReportPage.h"
#include "ui/StockListViewStrategy.h"
#include "ui/StrategyViewWidget.h"
#include "ui/TradeMarks.h"

#include <qcustomplot.h>

namespace {

TradeRow trade(const QString &code, const QString &buyDate, double buyPrice, double salePrice)
{
    TradeRow record;
    record.code = code;
    record.buyDate = record.saleDate = TradeDate::idOfText(buyDate);
    record.buyPrice = buyPrice;
    record.salePrice = salePrice;
    record.status = TradeStatus::SaleSignal;
    record.holdDays = 2;
    return record;
}

QStringList column(const QTableView *table, int index) { return columnTexts(table->model(), index); }

QString dateOf(const Stock &bar) { return QString::fromLatin1(bar.date.data(), qsizetype(bar.date.size())); }

StrategyReport sampleReport()
{
    static const std::string days[] = {"2023-12-29", "2024-01-02", "2024-01-03", "2024-02-01"};
    const float closes[] = {10, 11, 9.9f, 10.89f};
    std::vector<Stock> bars(4);
    for (size_t i = 0; i < bars.size(); ++i)
        std::tie(bars[i].date, bars[i].close) = std::tie(days[i], closes[i]);
    ReportMarket market;
    market.addStock(0, QStringLiteral("600000"), bars);
    const std::vector<ReportTrade> trades = {
        {"600000", "2024-01-02", 11, "2024-01-03", 9.9, 2, TradeExit::StopLoss, true, true},
        {"600000", "2024-01-03", 9.9, "2024-02-01", 10.89, 2, TradeExit::SalePoint, true, true}};
    return computeReport(trades, market, ReportSettings());
}

} // namespace

class ResultsWindowTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void tradesShowInRunOrderAndSortByTheirNumbers();
    void aWholeMarketOfTradesShowsAtOnceInAResizableWindow();
    void clickingATradeShowsItOnItsStocksChart();
    void daysWrittenInChineseAreFoundAndNamed();
    void theStatisticsPageShowsAndExportsTheReport();

private:
    QString m_dir;
    StockFileList m_files;
    StockSeries m_series;
};

void ResultsWindowTest::initTestCase()
{
    m_dir = sampleMarket();
    m_files = listStockFiles(m_dir);
    if (m_files.isEmpty())
        QSKIP("no sample market");
    StockLoader loader;
    QVERIFY(loader.loadStockSeries(m_files.first(), m_dir, QStringLiteral("default"), m_series));
    QVERIFY(m_series.size() > 120);
}

void ResultsWindowTest::tradesShowInRunOrderAndSortByTheirNumbers()
{
    StrategyViewWidget results;
    StockListViewStrategy *table = results.table();
    QAbstractItemModelTester trades(table->trades(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    QAbstractItemModelTester sorted(table->sorted(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    std::vector<TradeRow> rows = {
        trade("600000", "2021-03-01", 10, 11.5), trade("000001", "2021-01-04", 0, 5),
        trade("300001", "2021-02-01", 12.3456789, 24.6913578), trade("000002", "2021-01-04", 9.5, 9.1675)};
    rows[0].holdDays = 10;
    results.fill(rows);
    QCOMPARE(column(table, 0), (QStringList{"600000", "000001", "300001", "000002"}));
    QCOMPARE(column(table, 2), (QStringList{"10", "0", "12.3457", "9.5"}));
    QCOMPARE(column(table, 6), (QStringList{"15.00", "0.00", "100.00", "-3.50"})); // none without a buy price
    // Gains in red, losses in green.
    QCOMPARE(table->model()->index(0, 6).data(Qt::ForegroundRole).value<QBrush>().color(), QColor(Qt::red));
    QCOMPARE(table->model()->index(3, 6).data(Qt::ForegroundRole).value<QBrush>().color(),
             QColor(Qt::darkGreen));

    // As a header click does: numbers sort as numbers, where their texts would not.
    table->horizontalHeader()->setSortIndicator(6, Qt::AscendingOrder);
    QCOMPARE(column(table, 6), (QStringList{"-3.50", "0.00", "15.00", "100.00"}));
    table->horizontalHeader()->setSortIndicator(2, Qt::AscendingOrder);
    QCOMPARE(column(table, 2), (QStringList{"0", "9.5", "10", "12.3457"}));
    table->horizontalHeader()->setSortIndicator(5, Qt::AscendingOrder);
    QCOMPARE(column(table, 5), (QStringList{"2", "2", "2", "10"}));
    table->horizontalHeader()->setSortIndicator(0, Qt::DescendingOrder);
    QCOMPARE(column(table, 0), (QStringList{"600000", "300001", "000002", "000001"}));
}

void ResultsWindowTest::aWholeMarketOfTradesShowsAtOnceInAResizableWindow()
{
    std::vector<TradeRow> many;
    for (int i = 0; i < 150000; ++i)
        many.push_back(
            trade(QString::number(600000 + i % 5000), QStringLiteral("2021-03-01"), 10, 10 + i % 7));
    QWidget main;
    QElapsedTimer clock;
    clock.start();
    auto *results = new StrategyViewWidget(&main);
    results->setAttribute(Qt::WA_DeleteOnClose);
    results->fill(std::move(many));
    results->show();
    QApplication::processEvents();
    QVERIFY2(clock.elapsed() < 1000, qPrintable(QString::number(clock.elapsed())));
    QCOMPARE(results->table()->model()->rowCount(), 150000);
    QVERIFY(!results->isModal());
    QVERIFY(results->minimumWidth() < results->maximumWidth());

    // A six-digit code and a full date fit their columns in this font.
    const QFontMetrics metrics(results->table()->font());
    QVERIFY(results->table()->columnWidth(0) > metrics.horizontalAdvance(QStringLiteral("600000")));
    QVERIFY(results->table()->columnWidth(1) > metrics.horizontalAdvance(QStringLiteral("2021-03-01")));
    results->close();
}

void ResultsWindowTest::clickingATradeShowsItOnItsStocksChart()
{
    StrategyViewWidget results;
    results.setStocks(std::make_unique<LoadedStocks>(m_files, KLineSource{m_dir}));
    const QString day30 = dateOf(m_series.bars[30]);
    results.fill({trade(m_series.code, dateOf(m_series.bars[60]), 10, 11),
                  trade(m_series.code, day30, 10, 11), trade(m_series.code, "1990-01-01", 10, 11),
                  trade("999999", day30, 10, 11)});
    results.show();
    clickRow(results.table(), 0);
    CandlestickView *chart = results.chart();
    QCOMPARE(chart->candles()->data()->size(), m_series.size());
    QCOMPARE(chart->marks().buy()->data()->begin()->key, 60 * kChartDay);
    QVERIFY(chart->titleText().startsWith(m_series.code + ' ' + dateOf(m_series.bars[60])));
    QCOMPARE(chart->windowTitle(), chart->titleText());

    // The arrow keys choose as clicks do; a day or a stock the data lacks leaves the chart alone.
    QTest::keyClick(results.table(), Qt::Key_Down);
    QCOMPARE(chart->marks().buy()->data()->begin()->key, 30 * kChartDay);
    clickRow(results.table(), 2);
    clickRow(results.table(), 3);
    QCOMPARE(chart->marks().buy()->data()->begin()->key, 30 * kChartDay);
    QVERIFY(chart->titleText().startsWith(m_series.code + ' ' + day30));
}

void ResultsWindowTest::daysWrittenInChineseAreFoundAndNamed()
{
    QTemporaryDir market;
    QString items;
    for (int day = 1; day <= 12; ++day)
        items += QStringLiteral("[\"2021年1月%1日\",\"%2\",\"10\",\"11\",\"9\",\"1000\"],").arg(day).arg(day);
    QVERIFY(writeTestFile(
        market.filePath(QStringLiteral("600001")),
        TextFile::encode(QLatin1Char('[') + items.chopped(1) + QLatin1Char(']'), TextEncoding::Gbk)));
    StrategyViewWidget results;
    results.setStocks(
        std::make_unique<LoadedStocks>(listStockFiles(market.path()), KLineSource{market.path()}));
    results.fill({trade(QStringLiteral("600001"), QStringLiteral("2021年1月3日"), 3, 10)});
    results.show();
    clickRow(results.table(), 0);
    QCOMPARE(results.chart()->candles()->data()->size(), 12);
    QCOMPARE(results.chart()->marks().buy()->data()->begin()->key, 2 * kChartDay);
    QVERIFY(results.chart()->titleText().contains(QStringLiteral("2021年1月3日")));
}

// The 统计 page: the report's figures, and its files written on request.
void ResultsWindowTest::theStatisticsPageShowsAndExportsTheReport()
{
    StrategyViewWidget window;
    const StrategyReport report = sampleReport();
    window.setReport(report);
    ReportPage *page = window.reportPage();
    QCOMPARE(page->figureText(QStringLiteral("总收益率")), reportPercent(report.account.totalReturn));
    QCOMPARE(page->figureText(QStringLiteral("胜率")), QStringLiteral("50.00%"));
    QCOMPARE(page->figureText(QStringLiteral("回撤恢复")), QStringLiteral("未恢复"));

    // Tables sort by the number behind a text.
    const QAbstractItemModel *years = page->yearTable()->model();
    QCOMPARE(years->index(1, 0).data().toString(), QStringLiteral("2024"));
    QCOMPARE(years->index(1, 4).data().toString(), reportPercent(report.byYear[1].accountReturn));
    QCOMPARE(years->index(1, 4).data(Qt::UserRole).toDouble(), *report.byYear[1].accountReturn);
    QCOMPARE(page->monthTable()->model()->index(1, 2).data().toString(),
             reportPercent(report.monthly[2].accountReturn));
    const QAbstractItemModel *exits = page->exitTable()->model();
    QCOMPARE(exits->index(2, 0).data().toString() + exits->index(2, 1).data().toString(),
             QStringLiteral("止损1"));
    // A loss is green and a gain red, as Chinese traders read them.
    QCOMPARE(exits->index(2, 3).data(Qt::ForegroundRole).value<QBrush>().color(), QColor(21, 128, 61));
    QCOMPARE(exits->index(0, 3).data(Qt::ForegroundRole).value<QBrush>().color(), QColor(200, 16, 46));
    QCOMPARE(page->accountPlot()->graphCount(), 3);
    QCOMPARE(page->accountPlot()->graph(0)->dataCount(), 4);

    QTemporaryDir dir;
    QCOMPARE(page->exportTo(dir.path()), QString());
    QVERIFY(readTestFile(dir.filePath(QStringLiteral("report.html"))).contains("data:image/png;base64,"));
    QVERIFY(QFileInfo::exists(dir.filePath(QStringLiteral("report.json"))));
}

QTEST_MAIN(ResultsWindowTest)
#include "ResultsWindowTest.moc"
