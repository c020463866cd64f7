#pragma once

#include "ChartIndicator.h"

#include <QList>

#include <vector>

class ChartSeries;
class QCPAxisRect;
class QCPBars;
class QCPFinancial;
class QCPGraph;
class QCustomPlot;

// The chart's panes, one above the other on one time axis: the candles with
// their averages (and BOLL's bands when picked), the volume, and the picked
// indicator, each drawn from the series the chart shows.
class ChartPanes {
public:
    // Takes the plot's own axis rect for the candles and adds the other panes below it.
    ChartPanes(QCustomPlot *plot, ChartSeries &series);

    // Draws the whole series.
    void fill(ChartIndicator indicator, const DmiPeriods &dmi);
    // Draws another indicator, or the same with other periods.
    void fillIndicator(ChartIndicator indicator, const DmiPeriods &dmi);
    // Each pane's values span what the days in view hold.
    void fitValues();

    QList<QCPAxisRect *> all() const { return {m_price, m_volume, m_indicator}; }
    QCPAxisRect *price() const { return m_price; }
    QCPAxisRect *volume() const { return m_volume; }
    QCPAxisRect *indicator() const { return m_indicator; }
    QCPFinancial *candles() const { return m_candles; }

private:
    void setUpCandles();
    void setUpVolume();
    QCPGraph *addLine(QCPAxisRect *pane, const ChartLine &line);
    void fillLine(QCPGraph *graph, const ChartLine &line);
    void splitMacdBar(QCPAxisRect *pane);
    void placeIndicatorPane(bool shown);

    QCustomPlot *m_plot;
    ChartSeries &m_series;
    QCPAxisRect *m_price;
    QCPAxisRect *m_volume;
    QCPAxisRect *m_indicator;
    QCPFinancial *m_candles = nullptr;
    QCPBars *m_volumeUp = nullptr;
    QCPBars *m_volumeDown = nullptr;
    std::vector<QCPGraph *> m_averages;
    std::vector<QCPGraph *> m_indicatorGraphs; // in the indicator pane, or BOLL's over the candles
    std::vector<ChartLine> m_priceLines;       // the lines the candles' prices are fitted to
    std::vector<ChartLine> m_paneLines;        // those of the indicator pane
};
