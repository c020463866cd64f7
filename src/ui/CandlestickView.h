#pragma once

#include "ChartIndicator.h"
#include "ChartSeries.h"
#include "engine/TradeRecord.h"

#include <QWidget>

#include <memory>
#include <vector>

class ChartCrosshair;
class ChartPanes;
class QCPAxis;
class QCPAxisRect;
class QCPFinancial;
class QCPRange;
class QCPTextElement;
class QComboBox;
class QCustomPlot;
class TradeMarks;

// One stock's whole daily history as candles on black, with its 5-, 10- and
// 20-day averages, a volume pane and one indicator the user picks (MACD,
// KDJ or DMI in a pane of its own, BOLL over the candles). The wheel zooms
// and dragging moves along the days; the prices follow what is in view.
// Rising days are red and falling days green, as the market shows them.
//
// Any window may show a stock in it. PageUp and PageDown ask the window
// that owns the list of stocks for the previous or next one.
class CandlestickView : public QWidget {
    Q_OBJECT
public:
    explicit CandlestickView(QWidget *parent = nullptr);
    ~CandlestickView() override;

    // A trade of `stock`: opened on 20 days before its buy day to 45 after,
    // with ▲ at the buy, ▼ at the sale and the days held shaded. A buy still
    // waiting ("待买入") shows the stock up to its last bar, the signal day
    // marked. False, with the chart left as it was, when the trade's day is
    // not among the stock's bars.
    bool showTrade(const StockSeries &stock, const TradeRecord &trade);
    // The stock up to its last bar.
    void showStock(const StockSeries &stock);

    // DMI's periods, those of the strategy's own DMI; applies from the next stock shown.
    void setDmiPeriods(const DmiPeriods &periods) { m_dmi = periods; }
    void setIndicator(ChartIndicator indicator);
    ChartIndicator indicator() const { return m_indicator; }

    // Writes the chart as a PNG picture; an error text in the user's words, or empty.
    QString savePicture(const QString &path);

    QString code() const { return m_series.code; }
    QString titleText() const;
    // The crosshair's readout of the bar under the mouse; empty when the mouse is elsewhere.
    QString readoutText() const;
    QCustomPlot *plot() const { return m_plot; }
    QCPFinancial *candles() const;
    QCPAxis *timeAxis() const;
    QCPAxis *priceAxis() const;
    QCPAxisRect *volumePane() const;
    QCPAxisRect *indicatorPane() const;
    const TradeMarks &marks() const { return *m_marks; }
    // Room for about three months of candles and both panes, when shown as a window of its own.
    QSize sizeHint() const override { return {900, 620}; }

signals:
    void previousStockRequested();
    void nextStockRequested();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void setUpPlot();
    void setUpInteractions();
    void setUpPicker();
    void load(ChartSeries series);
    void showDays(int first, int last);
    void setTitle(const QString &text);
    void onTimeRangeChanged(const QCPRange &range);
    void showContextMenu(const QPoint &position);
    void askWhereToSave();

    ChartSeries m_series;
    DmiPeriods m_dmi;
    ChartIndicator m_indicator = ChartIndicator::Macd;
    QComboBox *m_picker = nullptr;
    QCustomPlot *m_plot = nullptr;
    QCPTextElement *m_title = nullptr;
    std::unique_ptr<ChartPanes> m_panes;
    std::unique_ptr<TradeMarks> m_marks;
    std::unique_ptr<ChartCrosshair> m_crosshair;
    bool m_syncing = false;
};
