#pragma once

#include "engine/TradeRecord.h"

#include <QDialog>

#include <vector>

class CandlestickView;
class LoadedStocks;
class ReportPage;
struct StrategyReport;
class StockListView;

// The results window: on one page the chart of the clicked trade's stock
// above the table of the run's trades, on the other the run's statistics.
class StrategyViewWidget : public QDialog {
    Q_OBJECT
public:
    explicit StrategyViewWidget(QWidget *parent = nullptr);

    // Where a clicked trade's stock is looked up; without it clicks show nothing.
    void setStocks(LoadedStocks *stocks) { m_stocks = stocks; }
    // Replaces the table's rows by the trades, in the order given.
    void fill(const std::vector<TradeRecord> &trades);
    // Fills the 统计 page.
    void setReport(const StrategyReport &report);

    CandlestickView *chart() const { return m_chart; }
    StockListView *table() const { return m_table; }
    ReportPage *reportPage() const { return m_reportPage; }

public slots:
    void onClick(int row, int column);

private:
    CandlestickView *m_chart;
    StockListView *m_table;
    ReportPage *m_reportPage;
    LoadedStocks *m_stocks = nullptr;
};
