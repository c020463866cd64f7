#pragma once

#include "engine/TodayPicks.h"
#include "engine/TradeRecord.h"

#include <QDialog>

#include <memory>
#include <vector>

class CandlestickView;
class LoadedStocks;
class PicksPage;
class ReportPage;
class StockListViewStrategy;
struct StrategyReport;

// The results window: the chart of the chosen trade's stock above the
// table of the run's trades. Not modal: the script stays editable beside it.
class StrategyViewWidget : public QDialog {
    Q_OBJECT
public:
    explicit StrategyViewWidget(QWidget *parent = nullptr);
    ~StrategyViewWidget() override;

    // Where a chosen trade's stock is looked up; without it choices show nothing.
    void setStocks(std::unique_ptr<LoadedStocks> stocks);
    // Replaces the table's rows by the trades, in the order given.
    void fill(std::vector<TradeRow> trades);
    // Fills the 选股 page.
    void setPicks(std::vector<StockPick> picks);
    // Fills the 统计 page.
    void setReport(const StrategyReport &report);

    CandlestickView *chart() const { return m_chart; }
    StockListViewStrategy *table() const { return m_table; }
    ReportPage *reportPage() const { return m_reportPage; }
    PicksPage *picksPage() const { return m_picksPage; }

public slots:
    void onTradeChosen(const TradeRow &trade);

private:
    CandlestickView *m_chart;
    StockListViewStrategy *m_table;
    ReportPage *m_reportPage;
    PicksPage *m_picksPage;
    std::unique_ptr<LoadedStocks> m_stocks;
};
