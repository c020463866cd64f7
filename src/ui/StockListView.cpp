#include "StockListView.h"

#include "LineDelegate.h"

#include <QHeaderView>

StockListView::StockListView(QWidget *parent) : QTableView(parent)
{
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    verticalHeader()->hide();
    horizontalHeader()->show();
    setAlternatingRowColors(true);
    setShowGrid(false);
    setItemDelegate(new LineDelegate(this));
    // No column is sorted until the user clicks a header, so rows keep the
    // order they were added in.
    horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    setSortingEnabled(true);
}
