#pragma once

#include <QList>
#include <QString>

class ChartSeries;
class QCPAxisRect;
class QCPItemStraightLine;
class QCPItemText;
class QCustomPlot;
class QPointF;

// The lines through the bar under the mouse and the price it points at,
// with that bar's date, open, high, low, close, 涨幅 and volume written in
// the corner of the candles. Drawn on the plot's buffered top layer, so
// following the mouse repaints only the crosshair.
class ChartCrosshair {
public:
    ChartCrosshair(QCustomPlot *plot, QCPAxisRect *candles, const QList<QCPAxisRect *> &panes);

    // Follows a mouse position in the plot's pixels; hides outside the bars.
    void moveTo(const ChartSeries &series, const QPointF &pixel);
    void hide();
    bool isVisible() const;
    QString text() const;

    // The readout of one bar.
    static QString readout(const ChartSeries &series, int index);

private:
    QCPItemStraightLine *addLine(QCPAxisRect *rect, bool vertical);
    void setVisible(bool visible);
    void repaint();

    QCustomPlot *m_plot;
    QCPAxisRect *m_candles;
    QList<QCPItemStraightLine *> m_days; // one per pane
    QCPItemStraightLine *m_price;
    QCPItemText *m_text;
};
