#pragma once

#include "StockListView.h"
#include "TradeTableModel.h"

#include <vector>

class QSortFilterProxyModel;

// The trades of a run, sortable by any column. Choosing a row, by click or
// by the arrow keys, reports its trade.
class StockListViewStrategy : public StockListView {
    Q_OBJECT
public:
    explicit StockListViewStrategy(QWidget *parent = nullptr);

    void setTrades(std::vector<TradeRow> trades);
    TradeTableModel *trades() const { return m_trades; }
    QSortFilterProxyModel *sorted() const { return m_sorted; }

signals:
    void tradeChosen(const TradeRow &trade);

private:
    void fitColumns();

    TradeTableModel *m_trades;
    QSortFilterProxyModel *m_sorted;
};
