#include "ChartCrosshair.h"

#include "ChartSeries.h"

#include <qcustomplot.h>

namespace {

const QColor kLineColour(200, 200, 200, 160);

QString price(float value) { return QString::number(value, 'f', 2); }

} // namespace

ChartCrosshair::ChartCrosshair(QCustomPlot *plot, QCPAxisRect *candles, const QList<QCPAxisRect *> &panes)
    : m_plot(plot), m_candles(candles)
{
    plot->layer(QStringLiteral("overlay"))->setMode(QCPLayer::lmBuffered);
    m_days << addLine(candles, true);
    for (QCPAxisRect *pane : panes)
        m_days << addLine(pane, true);
    m_price = addLine(candles, false);

    m_text = new QCPItemText(plot);
    m_text->setLayer(QStringLiteral("overlay"));
    m_text->setClipAxisRect(candles);
    m_text->position->setAxisRect(candles);
    m_text->position->setType(QCPItemPosition::ptAxisRectRatio);
    m_text->position->setCoords(0.005, 0.01);
    m_text->setPositionAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_text->setColor(QColor(230, 230, 230));
    m_text->setBrush(QColor(0, 0, 0, 170));
    m_text->setPadding(QMargins(4, 2, 4, 2));
    setVisible(false);
}

QCPItemStraightLine *ChartCrosshair::addLine(QCPAxisRect *rect, bool vertical)
{
    auto *line = new QCPItemStraightLine(m_plot);
    line->setLayer(QStringLiteral("overlay"));
    line->setClipAxisRect(rect);
    line->setPen(QPen(kLineColour, 0, Qt::DashLine));
    for (QCPItemPosition *point : {line->point1, line->point2}) {
        point->setAxes(rect->axis(QCPAxis::atBottom), rect->axis(QCPAxis::atLeft));
        point->setAxisRect(rect);
        // A vertical line crosses the pane whatever its prices; a horizontal one its days.
        if (vertical)
            point->setTypeY(QCPItemPosition::ptAxisRectRatio);
        else
            point->setTypeX(QCPItemPosition::ptAxisRectRatio);
    }
    return line;
}

void ChartCrosshair::moveTo(const ChartSeries &series, const QPointF &pixel)
{
    const int index = series.indexAt(m_candles->axis(QCPAxis::atBottom)->pixelToCoord(pixel.x()));
    if (index < 0 || pixel.x() < m_candles->left() || pixel.x() > m_candles->right()) {
        hide();
        return;
    }
    const double key = series.keys[index];
    for (QCPItemStraightLine *day : std::as_const(m_days)) {
        day->point1->setCoords(key, 0);
        day->point2->setCoords(key, 1);
        day->setVisible(day->clipAxisRect()->visible());
    }
    const bool overCandles = m_candles->rect().contains(pixel.toPoint());
    const double value = m_candles->axis(QCPAxis::atLeft)->pixelToCoord(pixel.y());
    m_price->point1->setCoords(0, value);
    m_price->point2->setCoords(1, value);
    m_price->setVisible(overCandles);
    m_text->setText(readout(series, index));
    m_text->setVisible(true);
    repaint();
}

void ChartCrosshair::hide()
{
    if (!m_text->visible())
        return;
    setVisible(false);
    repaint();
}

void ChartCrosshair::setVisible(bool visible)
{
    for (QCPItemStraightLine *day : std::as_const(m_days))
        day->setVisible(visible);
    m_price->setVisible(visible);
    m_text->setVisible(visible);
}

bool ChartCrosshair::isVisible() const { return m_text->visible(); }

QString ChartCrosshair::text() const { return m_text->visible() ? m_text->text() : QString(); }

void ChartCrosshair::repaint() { m_plot->layer(QStringLiteral("overlay"))->replot(); }

QString ChartCrosshair::readout(const ChartSeries &series, int index)
{
    const Stock &bar = series.bars[size_t(index)];
    // The first bar has no previous close: its increase means nothing.
    const QString increase =
        index > 0 ? QString::number(bar.increase, 'f', 2) + QLatin1Char('%') : QStringLiteral("--");
    return QStringLiteral("%1  开 %2  高 %3  低 %4  收 %5  涨幅 %6  量 %7")
        .arg(series.dates[index], price(bar.open), price(bar.high), price(bar.low), price(bar.close),
             increase, QString::number(double(bar.volume), 'f', 0));
}
