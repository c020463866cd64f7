#pragma once

#include "StockListView.h"

// The quote-list tables. They differ only in their columns, and they are
// filled by the base's plain row adder.

class BidStockListView : public StockListView {
    Q_OBJECT
public:
    explicit BidStockListView(QWidget *parent = nullptr);
};

class LHBStockListView : public StockListView {
    Q_OBJECT
public:
    explicit LHBStockListView(QWidget *parent = nullptr);
};

class LHBPKStockListView : public StockListView {
    Q_OBJECT
public:
    explicit LHBPKStockListView(QWidget *parent = nullptr);
};

class OCHLBasicStockListView : public StockListView {
    Q_OBJECT
public:
    explicit OCHLBasicStockListView(QWidget *parent = nullptr);
};

class BasicStockListView : public StockListView {
    Q_OBJECT
public:
    explicit BasicStockListView(QWidget *parent = nullptr);
};

// A new view of the given type (0 to 4 the quote lists, 6 the strategy
// trades), or nullptr for any other type.
StockListView *createStockListView(int type, QWidget *parent);
