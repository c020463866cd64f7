#pragma once

class QCPAxisRect;
class QCPGraph;
class QCPItemRect;
class QColor;
class QString;
class QCustomPlot;

// A trade drawn over the candles: ▲ with its tip at the buy price on the
// buy day, ▼ with its tip at the sale price on the sale day, and the days
// held shaded; or, for a buy still waiting, ▲ under the signal day's bar.
class TradeMarks {
public:
    TradeMarks(QCustomPlot *plot, QCPAxisRect *candles);

    void clear();
    void markBuy(double key, double price);
    void markSale(double key, double price);
    void markSignal(double key, double low);
    // Shades the days from `firstKey` to `lastKey`, both included.
    void shade(double firstKey, double lastKey);

    QCPGraph *buy() const { return m_buy; }
    QCPGraph *sale() const { return m_sale; }
    QCPGraph *signal() const { return m_signal; }
    QCPItemRect *span() const { return m_span; }

private:
    QCPGraph *addMark(const QString &name, bool pointsUp, const QColor &colour);

    QCPAxisRect *m_rect;
    QCPGraph *m_buy;
    QCPGraph *m_sale;
    QCPGraph *m_signal;
    QCPItemRect *m_span;
};
