#include "TradeMarks.h"

#include "ChartSeries.h"

#include <qcustomplot.h>

namespace {

// A triangle whose tip is the marked point, so the tip sits on the price
// and the body stays off the price it marks.
QPainterPath triangle(bool pointsUp)
{
    const double side = pointsUp ? 1 : -1;
    QPainterPath path;
    path.moveTo(0, 0);
    path.lineTo(-4, 8 * side);
    path.lineTo(4, 8 * side);
    path.closeSubpath();
    return path;
}

} // namespace

TradeMarks::TradeMarks(QCustomPlot *plot, QCPAxisRect *candles) : m_rect(candles)
{
    // Below the candles, so the shade never hides a bar.
    plot->addLayer(QStringLiteral("span"), plot->layer(QStringLiteral("grid")), QCustomPlot::limAbove);
    m_span = new QCPItemRect(plot);
    m_span->setLayer(QStringLiteral("span"));
    m_span->setClipAxisRect(candles);
    m_span->setPen(Qt::NoPen);
    m_span->setBrush(QColor(255, 255, 255, 30));
    for (QCPItemPosition *corner : {m_span->topLeft, m_span->bottomRight}) {
        corner->setAxes(candles->axis(QCPAxis::atBottom), candles->axis(QCPAxis::atLeft));
        corner->setAxisRect(candles);
        corner->setTypeY(QCPItemPosition::ptAxisRectRatio);
    }
    m_buy = addMark(QStringLiteral("buy"), true, QColor(255, 170, 0));
    m_sale = addMark(QStringLiteral("sale"), false, QColor(80, 170, 255));
    m_signal = addMark(QStringLiteral("signal"), true, QColor(255, 255, 255));
    clear();
}

QCPGraph *TradeMarks::addMark(const QString &name, bool pointsUp, const QColor &colour)
{
    auto *graph = new QCPGraph(m_rect->axis(QCPAxis::atBottom), m_rect->axis(QCPAxis::atLeft));
    graph->setName(name);
    graph->setLineStyle(QCPGraph::lsNone);
    graph->setScatterStyle(QCPScatterStyle(triangle(pointsUp), QPen(colour), QBrush(colour), 9));
    return graph;
}

void TradeMarks::clear()
{
    for (QCPGraph *mark : {m_buy, m_sale, m_signal})
        mark->data()->clear();
    m_span->setVisible(false);
}

void TradeMarks::markBuy(double key, double price) { m_buy->addData(key, price); }

void TradeMarks::markSale(double key, double price) { m_sale->addData(key, price); }

void TradeMarks::markSignal(double key, double low) { m_signal->addData(key, low); }

void TradeMarks::shade(double firstKey, double lastKey)
{
    m_span->topLeft->setCoords(firstKey - kChartDay / 2, 0);
    m_span->bottomRight->setCoords(lastKey + kChartDay / 2, 1);
    m_span->setVisible(true);
}
