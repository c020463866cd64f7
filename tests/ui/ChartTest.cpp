// A trader reads a trade on the chart: where it was bought and sold, the
// days around it, the volume, and the indicator lines the strategy reads.
#include "WidgetTestSupport.h"
#include "market/StockLoader.h"
#include "market/TextFile.h"
#include "ui/CandlestickView.h"
#include "ui/ChartCrosshair.h"
#include "ui/TradeMarks.h"

#include <qcustomplot.h>

#include <algorithm>
#include <map>

namespace {

QString dateOf(const Stock &bar) { return TextFile::decodeDate(bar.date); }

TradeRecord trade(const StockSeries &stock, int buy, int sale, double salePrice)
{
    TradeRecord record;
    record.buyDate = TradeDate::idOfText(dateOf(stock.bars[size_t(buy)]));
    record.saleDate = TradeDate::idOfText(dateOf(stock.bars[size_t(sale)]));
    record.buyPrice = stock.bars[size_t(buy)].open;
    record.salePrice = salePrice;
    record.holdDays = sale - buy + 1;
    record.status = TradeStatus::StopLoss;
    record.closed = true;
    return record;
}

// Every point of the graphs named `name`, by bar.
std::map<int, double> pointsOf(QCustomPlot *plot, const QString &name)
{
    std::map<int, double> points;
    for (int i = 0; i < plot->graphCount(); ++i) {
        QCPGraph *graph = plot->graph(i);
        if (graph->name() != name || !graph->visible())
            continue;
        for (auto point = graph->data()->constBegin(); point != graph->data()->constEnd(); ++point)
            points[qRound(point->key / kChartDay)] = point->value;
    }
    return points;
}

// Bars in view, from the time axis.
std::pair<int, int> daysInView(const CandlestickView &chart)
{
    const QCPRange range = chart.timeAxis()->range();
    return {int(std::ceil(range.lower / kChartDay)), int(std::floor(range.upper / kChartDay))};
}

void sendMouse(QWidget *widget, QEvent::Type type, QPointF at, Qt::MouseButtons buttons)
{
    QMouseEvent event(type, at, widget->mapToGlobal(at),
                      type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, buttons, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

} // namespace

class ChartTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void aTradeOrAPendingBuyIsMarkedAmongTheDaysAroundIt();
    void everyLineIsWhatEvalComputesForTheStock();
    void zoomingAndDraggingMoveTheDaysAndThePricesFollow();
    void theCrosshairReadsTheBarUnderTheMouse();
    void theChartSavesAsAPicture();

private:
    QString m_file;
    StockSeries m_stock;
    std::unique_ptr<CandlestickView> m_chart;
};

void ChartTest::initTestCase()
{
    const QString dir = sampleMarket();
    const StockFileList files = listStockFiles(dir);
    if (files.isEmpty())
        QSKIP("no sample market");
    m_file = files.first();
    StockLoader loader;
    QVERIFY(loader.loadStockSeries(m_file, dir, QStringLiteral("default"), m_stock));
    QVERIFY(m_stock.size() > 150);
}

void ChartTest::init()
{
    m_chart = std::make_unique<CandlestickView>();
    m_chart->resize(900, 640);
    m_chart->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_chart.get()));
}

void ChartTest::aTradeOrAPendingBuyIsMarkedAmongTheDaysAroundIt()
{
    const TradeRecord sold = trade(m_stock, 100, 104, 12.25);
    QVERIFY(m_chart->showTrade(m_stock, sold));
    QCOMPARE(m_chart->candles()->data()->size(), m_stock.size());
    QCOMPARE(pointsOf(m_chart->plot(), "buy"), (std::map<int, double>{{100, sold.buyPrice}}));
    QCOMPARE(pointsOf(m_chart->plot(), "sale"), (std::map<int, double>{{104, 12.25}}));
    const TradeMarks &marks = m_chart->marks();
    QVERIFY(marks.span()->visible());
    QCOMPARE(marks.span()->topLeft->coords().x(), 99.5 * kChartDay);
    QCOMPARE(marks.span()->bottomRight->coords().x(), 104.5 * kChartDay);
    const QString gain = QString::number((12.25 - sold.buyPrice) * 100 / sold.buyPrice, 'f', 2);
    QCOMPARE(m_chart->titleText(),
             QStringLiteral("%1 %2 涨幅 %3% 止损").arg(m_stock.code, dateOf(m_stock.bars[100]), gain));
    QCOMPARE(daysInView(*m_chart), std::make_pair(80, 145));
    // The averages run over the whole history, so the first day in view has its MA20.
    QVERIFY(pointsOf(m_chart->plot(), "ma20").count(80));

    // Near the end, the same number of days ends at the last bar.
    const int last = m_stock.size() - 1;
    QVERIFY(m_chart->showTrade(m_stock, trade(m_stock, last - 3, last, 10)));
    QCOMPARE(daysInView(*m_chart), std::make_pair(last - 65, last));

    // A buy still waiting shows the stock to its last bar with the signal day
    // marked, and none of the sold trade's marks.
    TradeRecord pending;
    pending.status = TradeStatus::PendingBuy;
    pending.buyDate =
        TradeDate::idOfText(dateOf(m_stock.bars[size_t(last)]) + QStringLiteral("下一日开盘买入"));
    QVERIFY(m_chart->showTrade(m_stock, pending));
    QCOMPARE(daysInView(*m_chart).second, last);
    QCOMPARE(pointsOf(m_chart->plot(), "signal"),
             (std::map<int, double>{{last, m_stock.bars[size_t(last)].low}}));
    QVERIFY(pointsOf(m_chart->plot(), "buy").empty());
    QVERIFY(!m_chart->marks().span()->visible());
    QVERIFY(m_chart->titleText().endsWith(QStringLiteral("待买入")));

    // A signal on an earlier day than the stock's last is not this stock's.
    pending.buyDate =
        TradeDate::idOfText(dateOf(m_stock.bars[size_t(last - 1)]) + QStringLiteral("下一日开盘买入"));
    QVERIFY(!m_chart->showTrade(m_stock, pending));
}

void ChartTest::everyLineIsWhatEvalComputesForTheStock()
{
    struct Pane {
        ChartIndicator indicator;
        QStringList terms;
    };
    const QList<Pane> panes = {
        {ChartIndicator::Macd, {"ma,5,0", "ma,10,0", "ma,20,0", "macd.bar,0", "macd.diff,0", "macd.dea,0"}},
        {ChartIndicator::Kdj, {"kdj.k,0", "kdj.d,0", "kdj.j,0"}},
        {ChartIndicator::Boll, {"boll.upper,0", "boll.mid,0", "boll.lower,0"}},
        {ChartIndicator::Dmi, {"dmi.pdi,10,4,0", "dmi.mdi,10,4,0", "dmi.adx,10,4,0", "dmi.adxr,10,4,0"}}};
    QStringList terms;
    for (const Pane &pane : panes)
        terms += pane.terms;
    QProcess eval;
    eval.start(QStringLiteral(ORVEL_CLI), QStringList{QStringLiteral("eval"), m_file} + terms);
    QVERIFY(eval.waitForFinished(60000));
    QCOMPARE(eval.exitCode(), 0);
    const QStringList lines = QString::fromUtf8(eval.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), m_stock.size());

    m_chart->setDmiPeriods({10, 4});
    m_chart->showStock(m_stock);
    for (const Pane &pane : panes) {
        m_chart->setIndicator(pane.indicator);
        for (const QString &term : pane.terms) {
            const int column = 2 + int(terms.indexOf(term));
            const QString name =
                term.startsWith("ma,") ? "ma" + term.section(',', 1, 1) : term.section(',', 0, 0);
            std::map<int, double> expected;
            for (int bar = 0; bar < lines.size(); ++bar) {
                const QString value = lines[bar].split('\t')[column];
                if (value != QLatin1String("NA"))
                    expected[bar] = value.toDouble();
            }
            QVERIFY2(expected.size() > size_t(m_stock.size() - 30), qPrintable(term));
            QCOMPARE(pointsOf(m_chart->plot(), name), expected);
        }
    }
    // BOLL is drawn over the candles, so its pane leaves the layout; the others bring it back.
    m_chart->setIndicator(ChartIndicator::Boll);
    QVERIFY(!m_chart->indicatorPane()->visible());
    m_chart->setIndicator(ChartIndicator::Kdj);
    QVERIFY(m_chart->indicatorPane()->visible());
    QVERIFY(pointsOf(m_chart->plot(), "boll.mid").empty());
}

void ChartTest::zoomingAndDraggingMoveTheDaysAndThePricesFollow()
{
    m_chart->showStock(m_stock);
    m_chart->plot()->replot();
    const QPointF middle = m_chart->plot()->axisRect()->rect().center();
    const auto wheel = [&](int delta) {
        QWheelEvent event(middle, m_chart->plot()->mapToGlobal(middle), {}, QPoint(0, delta), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(m_chart->plot(), &event);
    };
    const QCPRange before = m_chart->timeAxis()->range();
    wheel(240);
    const QCPRange zoomed = m_chart->timeAxis()->range();
    QVERIFY(zoomed.size() < before.size());
    QCOMPARE(m_chart->volumePane()->axis(QCPAxis::atBottom)->range(), zoomed);

    // Dragging to the right brings earlier days into view.
    sendMouse(m_chart->plot(), QEvent::MouseButtonPress, middle, Qt::LeftButton);
    sendMouse(m_chart->plot(), QEvent::MouseMove, middle + QPointF(300, 0), Qt::LeftButton);
    sendMouse(m_chart->plot(), QEvent::MouseButtonRelease, middle + QPointF(300, 0), Qt::NoButton);
    const auto [first, last] = daysInView(*m_chart);
    QVERIFY(last < m_stock.size() - 10);
    QVERIFY(m_chart->indicatorPane()->axis(QCPAxis::atBottom)->range() == m_chart->timeAxis()->range());

    // The price axis spans the bars and averages in view, not the whole history.
    std::vector<double> inView;
    for (int bar = first; bar <= last; ++bar)
        inView.insert(inView.end(), {m_stock.bars[size_t(bar)].low, m_stock.bars[size_t(bar)].high});
    for (const char *average : {"ma5", "ma10", "ma20"}) {
        const std::map<int, double> points = pointsOf(m_chart->plot(), average);
        std::transform(points.lower_bound(first), points.upper_bound(last), std::back_inserter(inView),
                       [](const auto &point) { return point.second; });
    }
    const auto [low, high] = std::minmax_element(inView.begin(), inView.end());
    const QCPRange prices = m_chart->priceAxis()->range();
    QVERIFY(prices.lower < *low && prices.upper > *high);
    QVERIFY(prices.size() < (*high - *low) * 1.2);

    // Zooming out stops at the whole history.
    for (int step = 0; step < 30; ++step)
        wheel(-240);
    QVERIFY(m_chart->timeAxis()->range().size() <= (m_stock.size() + 10) * kChartDay);
}

void ChartTest::theCrosshairReadsTheBarUnderTheMouse()
{
    const int buy = m_stock.size() - 30;
    m_chart->showTrade(m_stock, trade(m_stock, buy, buy + 2, 10));
    m_chart->plot()->replot();
    const Stock &bar = m_stock.bars[size_t(buy)];
    const QPointF at(m_chart->timeAxis()->coordToPixel(buy * kChartDay),
                     m_chart->priceAxis()->coordToPixel(bar.close));
    sendMouse(m_chart->plot(), QEvent::MouseMove, at, Qt::NoButton);
    const QString readout = m_chart->readoutText();
    QVERIFY2(readout.startsWith(dateOf(bar)), qPrintable(readout));
    QVERIFY2(readout.contains(QStringLiteral("收 %1").arg(bar.close, 0, 'f', 2)), qPrintable(readout));
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(m_chart->plot(), &leave);
    QVERIFY(m_chart->readoutText().isEmpty());
}

void ChartTest::theChartSavesAsAPicture()
{
    m_chart->showTrade(m_stock, trade(m_stock, 100, 104, 12.25));
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("trade.png"));
    QCOMPARE(m_chart->savePicture(path), QString());
    QCOMPARE(QImage(path).size(), m_chart->plot()->size());

    // A folder in the way is refused and kept.
    QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("folder.png")));
    QVERIFY(!m_chart->savePicture(dir.filePath(QStringLiteral("folder.png"))).isEmpty());
    QVERIFY(QFileInfo(dir.filePath(QStringLiteral("folder.png"))).isDir());
}

QTEST_MAIN(ChartTest)
#include "ChartTest.moc"
