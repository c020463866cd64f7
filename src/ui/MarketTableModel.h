#pragma once

#include "market/StockSummary.h"

#include <QAbstractTableModel>

#include <vector>

// The stocks of the data folder as a table: "代码", "日期", "收盘", "涨幅",
// "天数". Rows are added as the files are read. Cells are texts when shown
// and numbers under SortRole.
class MarketTableModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { Code, LastDate, LastClose, Increase, Days, ColumnCount };
    static constexpr int SortRole = Qt::UserRole;

    using QAbstractTableModel::QAbstractTableModel;

    void append(std::vector<StockSummary> stocks);
    void clear();
    const StockSummary &stock(int row) const { return m_stocks[size_t(row)]; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    std::vector<StockSummary> m_stocks;
};
