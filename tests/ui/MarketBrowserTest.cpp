// A user opens 行情: every stock of the data folder is listed as it is read,
// typing a code narrows the list, Enter opens the chart and PageDown/PageUp
// there step through the list as it is shown.
#include "ui/MarketBrowser.h"
#include "WidgetTestSupport.h"
#include "market/SpreadsheetCsv.h"
#include "ui/CandlestickView.h"
#include "ui/ChartNavigator.h"
#include "ui/MarketTableModel.h"
#include "ui/TableCsvExport.h"

#include <qcustomplot.h>

namespace {

// `days` days from 2024-01-01 on, closing at `close` on the last with the day before at 10.
QByteArray klineFile(int days, double close)
{
    QByteArray text = "[";
    for (int day = 0; day < days; ++day) {
        const double c = day == days - 1 ? close : 10.0;
        text += (day ? "," : "") + QStringLiteral(R"(["%1","10","%2","%3","9","%4"])")
                                       .arg(QDate(2024, 1, 1).addDays(day).toString(Qt::ISODate))
                                       .arg(c)
                                       .arg(std::max(c, 10.0))
                                       .arg(1000 + day)
                                       .toLatin1();
    }
    return text + "]";
}

QStringList codes(const QTableView *table) { return columnTexts(table->model(), MarketTableModel::Code); }

} // namespace

class MarketBrowserTest : public QObject {
    Q_OBJECT

private slots:
    void everyStockIsListedSortedByNumbersAndFilteredByCodePrefix();
    void enterOpensTheChartAndPageKeysStepThroughTheShownList();
    void aWholeMarketIsListedQuickly();

private:
    void openBrowser(const QTemporaryDir &dir);
    std::unique_ptr<MarketBrowser> m_browser;
};

void MarketBrowserTest::openBrowser(const QTemporaryDir &dir)
{
    const QList<std::tuple<const char *, int, double>> stocks = {{"600000", 30, 11.0},
                                                                 {"600001", 20, 9.5},
                                                                 {"601000", 10, 10.0},
                                                                 {"000001", 40, 10.4},
                                                                 {"300001", 3, 12}};
    for (const auto &[code, days, close] : stocks)
        QVERIFY(writeTestFile(dir.filePath(QString::fromLatin1(code)), klineFile(days, close)));
    m_browser = std::make_unique<MarketBrowser>(KLineSource{dir.path()});
    new QAbstractItemModelTester(m_browser->table()->model(), m_browser.get());
    m_browser->show();
    QTRY_VERIFY(!m_browser->isReading());
}

void MarketBrowserTest::everyStockIsListedSortedByNumbersAndFilteredByCodePrefix()
{
    QTemporaryDir dir;
    openBrowser(dir);
    QTableView *table = m_browser->table();
    // A stock too short for a backtest is still part of the folder.
    QCOMPARE(codes(table), QStringList({"000001", "300001", "600000", "600001", "601000"}));

    // Sorted by the numbers, not by their texts: 3 days before 10.
    table->sortByColumn(MarketTableModel::Days, Qt::AscendingOrder);
    QCOMPARE(codes(table), QStringList({"300001", "601000", "600001", "600000", "000001"}));
    table->sortByColumn(MarketTableModel::Increase, Qt::DescendingOrder);
    QCOMPARE(codes(table).first(), QStringLiteral("300001"));

    table->sortByColumn(MarketTableModel::Code, Qt::AscendingOrder);
    QTest::keyClicks(m_browser->prefixEdit(), "60");
    QCOMPARE(codes(table), QStringList({"600000", "600001", "601000"}));
    QTest::keyClick(m_browser->prefixEdit(), '0');
    QCOMPARE(codes(table), QStringList({"600000", "600001"}));
    // The list as shown, written for spreadsheets.
    const QString path = dir.filePath(QStringLiteral("list.csv"));
    QCOMPARE(TableCsvExport::write(*table->model(), path), QString());
    QCOMPARE(readTestFile(path), QStringLiteral("\uFEFF代码,日期,收盘,涨幅,天数\r\n"
                                                "600000,2024-01-30,11.00,10.00,30\r\n"
                                                "600001,2024-01-20,9.50,-5.00,20\r\n")
                                     .toUtf8());
    // Fields that would split a row are quoted.
    QCOMPARE(SpreadsheetCsv::bytes({"a"}, {{"x,\"y\""}}), QByteArray("\xEF\xBB\xBF"
                                                                     "a\r\n\"x,\"\"y\"\"\"\r\n"));
    // A prefix, not a part: "01" is no code's beginning but "000001"'s end.
    m_browser->prefixEdit()->setText(QStringLiteral("01"));
    QCOMPARE(codes(table), QStringList());
    m_browser->prefixEdit()->clear();
    QCOMPARE(codes(table).size(), 5);
}

void MarketBrowserTest::enterOpensTheChartAndPageKeysStepThroughTheShownList()
{
    QTemporaryDir dir;
    openBrowser(dir);
    QTest::keyClicks(m_browser->prefixEdit(), "60");
    QTest::keyClick(m_browser->prefixEdit(), Qt::Key_Return);
    CandlestickView *chart = m_browser->navigator()->window();
    QVERIFY(chart && chart->isVisible());
    QCOMPARE(chart->code(), QStringLiteral("600000"));
    QVERIFY(chart->titleText().startsWith(QStringLiteral("600000")));

    // The key reaches the window from the plot, where the focus is.
    QTest::keyClick(chart->plot(), Qt::Key_PageDown);
    QCOMPARE(chart->code(), QStringLiteral("600001"));
    QCOMPARE(m_browser->table()->currentIndex().row(), 1);
    QTest::keyClick(chart, Qt::Key_PageDown);
    QCOMPARE(chart->code(), QStringLiteral("601000"));
    // The end of the shown list: no further, and never outside the filter.
    QTest::keyClick(chart, Qt::Key_PageDown);
    QCOMPARE(chart->code(), QStringLiteral("601000"));
    QTest::keyClick(chart, Qt::Key_PageUp);
    QCOMPARE(chart->code(), QStringLiteral("600001"));

    // Sorted differently, the keys follow the new order; a double-click opens a row too.
    m_browser->prefixEdit()->clear();
    QTableView *table = m_browser->table();
    table->sortByColumn(MarketTableModel::Days, Qt::DescendingOrder);
    clickRow(table, 0, true);
    QCOMPARE(chart->code(), QStringLiteral("000001"));
    QTest::keyClick(chart, Qt::Key_PageDown);
    QCOMPARE(chart->code(), QStringLiteral("600000"));
}

// ORVEL_MARKET_DIR names a folder to measure, such as a whole market's.
void MarketBrowserTest::aWholeMarketIsListedQuickly()
{
    const QString dir = qEnvironmentVariableIsSet("ORVEL_MARKET_DIR")
                            ? qEnvironmentVariable("ORVEL_MARKET_DIR")
                            : QStringLiteral(ORVEL_SHARED_DIR "/data/a-share-daily");
    if (!QDir(dir).exists())
        QSKIP("no market data");
    MarketBrowser browser(KLineSource{dir});
    browser.show();
    QTRY_VERIFY_WITH_TIMEOUT(!browser.isReading(), 60000);
    const int files = int(QDir(dir).entryList(QDir::Files).size());
    QCOMPARE(browser.table()->model()->rowCount(), files);
    qInfo("%d stocks listed in %lld ms", files, browser.readingMilliseconds());
}

QTEST_MAIN(MarketBrowserTest)
#include "MarketBrowserTest.moc"
