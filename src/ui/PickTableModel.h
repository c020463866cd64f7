#pragma once

#include "engine/TodayPicks.h"

#include <QAbstractTableModel>

#include <vector>

// Today's picks as a table: "代码", "信号日期", "收盘", "涨幅", "成交量", in
// the order the screen gives them until the user sorts. Numbers under SortRole.
class PickTableModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { Code, SignalDate, Close, Increase, Volume, ColumnCount };
    static constexpr int SortRole = Qt::UserRole;

    using QAbstractTableModel::QAbstractTableModel;

    void setPicks(std::vector<StockPick> picks);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    std::vector<StockPick> m_picks;
};
