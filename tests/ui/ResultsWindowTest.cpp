// A user reads the results window: sorts the trades, and clicks a trade to
// see its stock's candles from the buy day on.
#include "ui/CandlestickView.h"
#include "ui/LoadedStocks.h"
#include "ui/StockListViewStrategy.h"
#include "ui/StockListViews.h"
#include "ui/StrategyViewWidget.h"

#include <QDir>
#include <QtTest>
#include <qcustomplot.h>

namespace {

TradeRecord trade(const QString &code, const QString &buyDate, double buyPrice, double salePrice)
{
    TradeRecord record;
    record.code = code;
    record.buyDate = buyDate;
    record.buyPrice = buyPrice;
    record.saleDate = buyDate;
    record.salePrice = salePrice;
    record.holdDays = 3;
    record.status = QStringLiteral("正常卖出");
    return record;
}

QStringList column(const QTableWidget *table, int index)
{
    QStringList texts;
    for (int row = 0; row < table->rowCount(); ++row)
        texts << table->item(row, index)->text();
    return texts;
}

QString dateOf(const Stock &bar) { return QString::fromLatin1(bar.date.data(), qsizetype(bar.date.size())); }

void clickRow(QTableWidget *table, int row)
{
    const QRect cell = table->visualItemRect(table->item(row, 0));
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, cell.center());
}

} // namespace

class ResultsWindowTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void tradesAppearInRunOrderWithTheirGain();
    void sortingByGainOrPriceIsNumeric();
    void clickingATradeShowsItsStockFromTheBuyDay();
    void aTradeNearTheEndOfItsStockShowsFewerCandles();
    void aTradeWhoseDayIsUnknownLeavesTheChartAlone();
    void anIndexPastTheEndShowsTheFirstDays();
    void onlyKnownViewTypesAreMade();

private:
    StrategyConfig m_config;
    StockFileList m_files;
    QString m_code;
    StockSeries m_series;
};

void ResultsWindowTest::initTestCase()
{
    const QString data = QStringLiteral(ORVEL_SOURCE_DIR "/data");
    m_config.kDir = QDir(data).isEmpty(QDir::Files) ? QStringLiteral(ORVEL_SHARED_DIR "/data/synthetic-market") : data;
    m_files = listStockFiles(m_config.kDir);
    if (m_files.isEmpty())
        QSKIP("no sample market");
    StockLoader loader;
    QVERIFY(loader.loadStockSeries(m_files.first(), m_config, m_series));
    QVERIFY(m_series.size() > 120);
    m_code = m_series.code;
}

void ResultsWindowTest::tradesAppearInRunOrderWithTheirGain()
{
    StrategyViewWidget results;
    results.fill({trade(QStringLiteral("600000"), QStringLiteral("2021-03-01"), 10, 11.5),
                  trade(QStringLiteral("000001"), QStringLiteral("2021-01-04"), 0, 5),
                  trade(QStringLiteral("300001"), QStringLiteral("2021-02-01"), 12.3456789, 12.3456789)});
    QTableWidget *table = results.table();
    QCOMPARE(column(table, 0), (QStringList{"600000", "000001", "300001"}));
    QCOMPARE(column(table, 6), (QStringList{"15.00", "0.00", "0.00"}));
    QCOMPARE(column(table, 2), (QStringList{"10", "0", "12.3457"}));
    QCOMPARE(table->item(0, 7)->text(), QStringLiteral("正常卖出"));

    // Filling again replaces the rows.
    results.fill({trade(QStringLiteral("600000"), QStringLiteral("2021-03-01"), 10, 9)});
    QCOMPARE(table->rowCount(), 1);
    QCOMPARE(table->item(0, 6)->text(), QStringLiteral("-10.00"));
}

void ResultsWindowTest::sortingByGainOrPriceIsNumeric()
{
    StrategyViewWidget results;
    results.fill({trade(QStringLiteral("000001"), QStringLiteral("2021-01-04"), 10, 20),      // 100.00
                  trade(QStringLiteral("000002"), QStringLiteral("2021-01-04"), 9.5, 9.1675), // -3.50
                  trade(QStringLiteral("000003"), QStringLiteral("2021-01-04"), 25, 28)});    // 12.00
    QTableWidget *table = results.table();
    table->horizontalHeader()->setSortIndicator(6, Qt::AscendingOrder); // as a header click does
    QCOMPARE(column(table, 6), (QStringList{"-3.50", "12.00", "100.00"}));
    table->horizontalHeader()->setSortIndicator(2, Qt::AscendingOrder);
    QCOMPARE(column(table, 2), (QStringList{"9.5", "10", "25"}));
}

void ResultsWindowTest::clickingATradeShowsItsStockFromTheBuyDay()
{
    LoadedStocks stocks(m_files, m_config);
    StrategyViewWidget results;
    results.setStocks(&stocks);
    const int buyIndex = 60;
    results.fill({trade(m_code, dateOf(m_series.bars[buyIndex]), 10, 11)});
    results.show();
    clickRow(results.table(), 0);

    CandlestickView *chart = results.chart();
    QCOMPARE(chart->candles()->data()->size(), 45);
    QCOMPARE(chart->candles()->data()->begin()->open, double(m_series.bars[buyIndex].open));
    QVERIFY(chart->titleText().contains(m_code));
    QCOMPARE(chart->windowTitle(), chart->titleText());
    // Each average starts once it has its days, counted from the buy day.
    QCustomPlot *plot = chart->plot();
    QCOMPARE(plot->graph(0)->data()->size(), 41);
    QCOMPARE(plot->graph(1)->data()->size(), 36);
    QCOMPARE(plot->graph(2)->data()->size(), 26);
    QCOMPARE(plot->graph(0)->data()->begin()->key, 5 * 86400.0);
}

void ResultsWindowTest::aTradeNearTheEndOfItsStockShowsFewerCandles()
{
    LoadedStocks stocks(m_files, m_config);
    StrategyViewWidget results;
    results.setStocks(&stocks);
    results.fill({trade(m_code, dateOf(m_series.bars[size_t(m_series.size() - 10)]), 10, 11)});
    results.show();
    clickRow(results.table(), 0);
    QCOMPARE(results.chart()->candles()->data()->size(), 10);
    QCOMPARE(results.chart()->plot()->graph(2)->data()->size(), 0);
}

void ResultsWindowTest::aTradeWhoseDayIsUnknownLeavesTheChartAlone()
{
    LoadedStocks stocks(m_files, m_config);
    StrategyViewWidget results;
    results.setStocks(&stocks);
    results.fill({trade(m_code, dateOf(m_series.bars[30]), 10, 11), trade(m_code, QStringLiteral("1990-01-01"), 10, 11),
                  trade(QStringLiteral("999999"), dateOf(m_series.bars[30]), 10, 11)});
    results.show();
    clickRow(results.table(), 0);
    const QString title = results.chart()->titleText();
    clickRow(results.table(), 1);
    clickRow(results.table(), 2);
    QCOMPARE(results.chart()->titleText(), title);
    QCOMPARE(results.chart()->candles()->data()->begin()->open, double(m_series.bars[30].open));
}

void ResultsWindowTest::anIndexPastTheEndShowsTheFirstDays()
{
    CandlestickView chart;
    chart.showData(45, m_series, m_series.size() + 5);
    QCOMPARE(chart.candles()->data()->size(), 45);
    QCOMPARE(chart.candles()->data()->begin()->open, double(m_series.bars[0].open));

    StockSeries empty;
    chart.showData(45, empty, 0);
    QCOMPARE(chart.candles()->data()->size(), 45);
}

void ResultsWindowTest::onlyKnownViewTypesAreMade()
{
    QWidget parent;
    const int columns[] = {9, 7, 6, 13, 7, -1, 8};
    for (int type = 0; type <= 6; ++type) {
        StockListView *view = createStockListView(type, &parent);
        if (columns[type] < 0) {
            QVERIFY(!view);
            continue;
        }
        QVERIFY(view);
        QCOMPARE(view->columnCount(), columns[type]);
    }
    QVERIFY(!createStockListView(7, &parent));
    QVERIFY(qobject_cast<StockListViewStrategy *>(createStockListView(6, &parent)));
}

QTEST_MAIN(ResultsWindowTest)
#include "ResultsWindowTest.moc"
