#pragma once

#include "indicators/MaNIndicator.h"
#include "market/Stock.h"

#include <QWidget>

#include <array>

class QCPFinancial;
class QCPTextElement;
class QCustomPlot;
class QMouseEvent;

// One stock's daily candles from a chosen day on, with its 5-, 10- and
// 20-day averages, on black. Rising days are red and falling days green, as
// the market shows them.
class CandlestickView : public QWidget {
    Q_OBJECT
public:
    explicit CandlestickView(QWidget *parent = nullptr);

    // Shows up to `span` days of `stock` starting at record `index` (at the
    // first record when `index` is past the end). A stock without records
    // leaves the chart as it is.
    void showData(int span, const StockSeries &stock, int index);

    QCustomPlot *plot() const { return m_plot; }
    QCPFinancial *candles() const { return m_candles; }
    QString titleText() const;

public slots:
    void onMouseClick(QMouseEvent *event);

private:
    void setUpCandles();
    void setUpAverages();
    void setUpAxes();
    void labelDays(const StockSeries &stock, int start, int count);

    // 5, 10 and 20 days, matching the graphs "ma5", "ma10" and "ma20".
    std::array<MaNIndicator, 3> m_averages{MaNIndicator(5), MaNIndicator(10), MaNIndicator(20)};
    QCustomPlot *m_plot = nullptr;
    QCPTextElement *m_title = nullptr;
    QCPFinancial *m_candles = nullptr;
};
