#include "StockListView.h"

#include "LineDelegate.h"

#include <QHeaderView>

StockListView::StockListView(QWidget *parent) : QTableWidget(parent)
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
    connect(this, SIGNAL(cellClicked(int, int)), this, SLOT(onClick(int, int)));
}

void StockListView::addStock(const StockRow &row)
{
    // A sorted table would move the row while its cells are being set.
    const bool sorting = isSortingEnabled();
    setSortingEnabled(false);
    appendRow(row);
    setSortingEnabled(sorting);
    m_stocks.insert(row.value(0), row);
}

void StockListView::addStocks(const QList<StockRow> &rows)
{
    for (const StockRow &row : rows)
        addStock(row);
}

void StockListView::onClick(int row, int column)
{
    m_clickedRow = row;
    m_clickedColumn = column;
    onClickRow(row, column);
}

void StockListView::onClickRow(int, int) {}

void StockListView::appendRow(const StockRow &row)
{
    const int index = newRow();
    for (int column = 0; column < row.size() && column < columnCount(); ++column)
        setItem(index, column, new QTableWidgetItem(row[column]));
}

void StockListView::setHeaders(const QStringList &headers)
{
    setColumnCount(int(headers.size()));
    setHorizontalHeaderLabels(headers);
}

int StockListView::newRow()
{
    const int index = rowCount();
    insertRow(index);
    return index;
}
