#include "CandlestickView.h"

#include "market/TextFile.h"

#include <QVBoxLayout>
#include <qcustomplot.h>

namespace {

constexpr double kDay = 86400; // keys are seconds; one candle per day position
const QStringList kAverageNames{QStringLiteral("ma5"), QStringLiteral("ma10"), QStringLiteral("ma20")};
const QColor kAxisColour(170, 170, 170);

// Read as the trades read them, so the title names the day the table shows.
QString dateText(const Stock &bar) { return TextFile::decodeDate(bar.date); }

} // namespace

CandlestickView::CandlestickView(QWidget *parent) : QWidget(parent)
{
    setWindowTitle(QStringLiteral("股票日K"));
    setWindowIcon(QIcon(QStringLiteral(":logo/orvel.png")));
    auto *layout = new QVBoxLayout(this);

    m_plot = new QCustomPlot(this);
    m_plot->setBackground(QBrush(Qt::black));
    m_plot->setLocale(QLocale(QLocale::Chinese, QLocale::China));

    m_plot->plotLayout()->insertRow(0);
    QFont titleFont = font();
    titleFont.setPointSize(12);
    m_title = new QCPTextElement(m_plot, QStringLiteral("---"), titleFont);
    m_title->setTextColor(QColor(244, 244, 244, 255));
    m_plot->plotLayout()->addElement(0, 0, m_title);

    setUpCandles();
    setUpAverages();
    setUpAxes();

    layout->addWidget(m_plot);
    connect(m_plot, SIGNAL(mousePress(QMouseEvent *)), this, SLOT(onMouseClick(QMouseEvent *)));
}

void CandlestickView::setUpCandles()
{
    m_candles = new QCPFinancial(m_plot->xAxis, m_plot->yAxis);
    m_candles->setName(QStringLiteral("Candlestick"));
    m_candles->setChartStyle(QCPFinancial::csCandlestick);
    m_candles->setWidth(kDay * 0.9);
    m_candles->setTwoColored(true);
    const QColor rising(180, 90, 90);
    const QColor falling(100, 180, 110);
    m_candles->setBrushPositive(rising);
    m_candles->setPenPositive(QPen(rising));
    m_candles->setBrushNegative(falling);
    m_candles->setPenNegative(QPen(falling));
}

void CandlestickView::setUpAverages()
{
    const QColor colours[] = {Qt::yellow, Qt::cyan, Qt::gray};
    for (int i = 0; i < 3; ++i) {
        QCPGraph *graph = m_plot->addGraph();
        graph->setName(kAverageNames[i]);
        graph->setPen(QPen(colours[i]));
    }
}

void CandlestickView::setUpAxes()
{
    for (QCPAxis *axis : {m_plot->xAxis, m_plot->yAxis}) {
        axis->setBasePen(QPen(kAxisColour));
        axis->setTickPen(QPen(kAxisColour));
        axis->setSubTickPen(QPen(kAxisColour));
        axis->setTickLabelColor(kAxisColour);
        axis->grid()->setPen(QPen(QColor(60, 60, 60), 0, Qt::DotLine));
    }
    m_plot->xAxis->setTicker(QSharedPointer<QCPAxisTickerText>::create());
    // Room around the candles so that none touches the plot's edge.
    m_plot->xAxis->scaleRange(1.025, m_plot->xAxis->range().center());
    m_plot->yAxis->scaleRange(1.1, m_plot->yAxis->range().center());
}

void CandlestickView::showData(int span, const StockSeries &stock, int index)
{
    if (!m_plot || stock.bars.empty())
        return;
    m_plot->xAxis->setRange(0, (span + 1) * kDay);
    for (int i = 0; i < 3; ++i)
        m_plot->graph(i)->data()->clear();
    for (MaNIndicator &average : m_averages)
        average.reset();

    const int start = index < stock.size() ? index : 0;
    const int count = std::min(span, stock.size() - start);
    QVector<double> keys, open, high, low, close;
    for (int k = 1; k <= count; ++k) {
        const Stock &bar = stock.bars[size_t(start + k - 1)];
        const double key = k * kDay;
        keys << key;
        open << bar.open;
        high << bar.high;
        low << bar.low;
        close << bar.close;
        for (int i = 0; i < 3; ++i) {
            const IndicatorValue average = m_averages[size_t(i)].next(bar);
            if (average.valid)
                m_plot->graph(i)->addData(key, average.value1);
        }
    }
    m_candles->setData(keys, open, high, low, close, true);
    labelDays(stock, start, count);

    const QString title = QStringLiteral("%1 %2").arg(stock.code, dateText(stock.bars[size_t(start)]));
    m_title->setText(title);
    setWindowTitle(title);
    m_plot->rescaleAxes(true);
    m_plot->replot();
}

// Keys are day positions, so the time axis is labelled with the records'
// own dates ("MM-dd"), about every ninth day.
void CandlestickView::labelDays(const StockSeries &stock, int start, int count)
{
    auto ticker = m_plot->xAxis->ticker().dynamicCast<QCPAxisTickerText>();
    ticker->clear();
    const int step = std::max(1, (count + 4) / 5);
    for (int k = 1; k <= count; k += step)
        ticker->addTick(k * kDay, dateText(stock.bars[size_t(start + k - 1)]).mid(5));
}

QString CandlestickView::titleText() const { return m_title->text(); }

void CandlestickView::onMouseClick(QMouseEvent *event) { event->accept(); }
