#pragma once

#include "engine/TradeRecord.h"

#include <QAbstractTableModel>

#include <vector>

// The trades of a run as a table: "代码", "买入日期", "买入价位", "卖出日期",
// "卖出价位", "持股天数", "涨幅", "卖出类型". Cells are texts when shown and
// numbers under SortRole, so a sort compares what the texts stand for.
class TradeTableModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { Code, BuyDate, BuyPrice, SaleDate, SalePrice, HoldDays, Gain, SaleType, ColumnCount };
    static constexpr int SortRole = Qt::UserRole;

    using QAbstractTableModel::QAbstractTableModel;

    void setTrades(std::vector<TradeRow> trades);
    const TradeRow &trade(int row) const { return m_trades[size_t(row)]; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    // The gain in percent; 0 without a buy price.
    static double gainOf(const TradeRecord &trade);

private:
    QString text(const TradeRow &trade, int column) const;
    QVariant sortKey(const TradeRow &trade, int column) const;

    std::vector<TradeRow> m_trades;
};
