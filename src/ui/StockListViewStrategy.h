#pragma once

#include "StockListView.h"

// The trades of a run. A row is the trade's texts in this order: code, buy
// date, buy price, sale date, sale price, days held, sale type; the table
// adds the gain between the sale price and the sale type.
class StockListViewStrategy : public StockListView {
    Q_OBJECT
public:
    explicit StockListViewStrategy(QWidget *parent = nullptr);

protected slots:
    void appendRow(const StockRow &row) override;
};
