#pragma once

#include "engine/TradeRecord.h"

#include <QDialog>

#include <vector>

class CandlestickView;
class LoadedStocks;
class StockListView;

// The results window: the chart of the clicked trade's stock above the
// table of the run's trades.
class StrategyViewWidget : public QDialog {
    Q_OBJECT
public:
    explicit StrategyViewWidget(QWidget *parent = nullptr);

    // Where a clicked trade's stock is looked up; without it clicks show nothing.
    void setStocks(LoadedStocks *stocks) { m_stocks = stocks; }
    // Replaces the table's rows by the trades, in the order given.
    void fill(const std::vector<TradeRecord> &trades);

    CandlestickView *chart() const { return m_chart; }
    StockListView *table() const { return m_table; }

public slots:
    void onClick(int row, int column);

private:
    CandlestickView *m_chart;
    StockListView *m_table;
    LoadedStocks *m_stocks = nullptr;
};
