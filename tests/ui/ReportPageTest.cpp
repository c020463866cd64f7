// A user reads the 统计 page after a run and exports the report.
#include "ui/ReportPage.h"
#include "WidgetTestSupport.h"
#include "report/ReportHtml.h"
#include "ui/StrategyViewWidget.h"

#include <qcustomplot.h>

namespace {

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

class ReportPageTest : public QObject {
    Q_OBJECT
private slots:
    void showsTheFiguresOfTheReport()
    {
        StrategyViewWidget window;
        const StrategyReport report = sampleReport();
        window.setReport(report);
        const ReportPage *page = window.reportPage();
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
    }

    void exportsTheSameFilesAsTheCommandLine()
    {
        ReportPage page;
        page.setReport(sampleReport());
        QTemporaryDir dir;
        QCOMPARE(page.exportTo(dir.path()), QString());
        QVERIFY(readTestFile(dir.filePath(QStringLiteral("report.html"))).contains("data:image/png;base64,"));
        QVERIFY(QFileInfo::exists(dir.filePath(QStringLiteral("report.json"))));
    }
};

QTEST_MAIN(ReportPageTest)
#include "ReportPageTest.moc"
