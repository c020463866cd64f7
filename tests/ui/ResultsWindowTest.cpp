// A user reads the results window: sorts the trades, and clicks a trade to
// see it on its stock's chart.
#include "WidgetTestSupport.h"
#include "market/TextFile.h"
#include "ui/CandlestickView.h"
#include "ui/LoadedStocks.h"
#include "ui/StockListViewStrategy.h"
#include "ui/StrategyViewWidget.h"
#include "ui/TradeMarks.h"

#include <qcustomplot.h>

namespace {

TradeRecord trade(const QString &code, const QString &buyDate, double buyPrice, double salePrice)
{
    TradeRecord record;
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

} // namespace

class ResultsWindowTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void tradesAppearInRunOrderWithTheirGain();
    void sortingByGainPriceOrDaysIsNumeric();
    void aWholeMarketOfTradesShowsAtOnceInAResizableWindow();
    void clickingATradeShowsItOnItsStocksChart();
    void daysWrittenInChineseAreFoundAndNamed();

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

void ResultsWindowTest::tradesAppearInRunOrderWithTheirGain()
{
    StrategyViewWidget results;
    results.fill({trade("600000", "2021-03-01", 10, 11.5), trade("000001", "2021-01-04", 0, 5),
                  trade("300001", "2021-02-01", 12.3456789, 12.3456789)});
    StockListViewStrategy *table = results.table();
    QCOMPARE(column(table, 0), (QStringList{"600000", "000001", "300001"}));
    QCOMPARE(column(table, 2), (QStringList{"10", "0", "12.3457"}));
    QCOMPARE(column(table, 6), (QStringList{"15.00", "0.00", "0.00"})); // no gain without a buy price

    // Gains in red, losses in green.
    const QModelIndex gain = table->model()->index(0, 6);
    QCOMPARE(gain.data(Qt::ForegroundRole).value<QBrush>().color(), QColor(Qt::red));
    results.fill({trade("600000", "2021-03-01", 10, 9)});
    QCOMPARE(column(table, 6), QStringList{"-10.00"});
    QCOMPARE(table->model()->index(0, 6).data(Qt::ForegroundRole).value<QBrush>().color(),
             QColor(Qt::darkGreen));
}

void ResultsWindowTest::sortingByGainPriceOrDaysIsNumeric()
{
    StrategyViewWidget results;
    StockListViewStrategy *table = results.table();
    QAbstractItemModelTester trades(table->trades(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    QAbstractItemModelTester sorted(table->sorted(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    std::vector<TradeRecord> rows = {trade("000001", "2021-01-04", 10, 20),
                                     trade("000002", "2021-01-04", 9.5, 9.1675),
                                     trade("000003", "2021-01-04", 25, 28)};
    rows[0].holdDays = 10;
    results.fill(rows);
    table->horizontalHeader()->setSortIndicator(6, Qt::AscendingOrder); // as a header click does
    QCOMPARE(column(table, 6), (QStringList{"-3.50", "12.00", "100.00"}));
    table->horizontalHeader()->setSortIndicator(2, Qt::AscendingOrder);
    QCOMPARE(column(table, 2), (QStringList{"9.5", "10", "25"}));
    table->horizontalHeader()->setSortIndicator(5, Qt::AscendingOrder);
    QCOMPARE(column(table, 5), (QStringList{"2", "2", "10"}));
    table->horizontalHeader()->setSortIndicator(0, Qt::DescendingOrder);
    QCOMPARE(column(table, 0), (QStringList{"000003", "000002", "000001"}));
}

void ResultsWindowTest::aWholeMarketOfTradesShowsAtOnceInAResizableWindow()
{
    std::vector<TradeRecord> many;
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

QTEST_MAIN(ResultsWindowTest)
#include "ResultsWindowTest.moc"
