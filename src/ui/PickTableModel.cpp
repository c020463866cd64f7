#include "PickTableModel.h"

#include <QBrush>

void PickTableModel::setPicks(std::vector<StockPick> picks)
{
    beginResetModel();
    m_picks = std::move(picks);
    endResetModel();
}

int PickTableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_picks.size());
}

int PickTableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant PickTableModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const StockPick &pick = m_picks[size_t(index.row())];
    const int column = index.column();
    if (role == Qt::DisplayRole) {
        switch (column) {
        case Code: return pick.code;
        case SignalDate: return pick.date;
        case Close: return QString::number(pick.close, 'f', 2);
        case Increase: return QString::number(pick.increase, 'f', 2);
        case Volume: return QString::number(double(pick.volume), 'f', 0);
        }
    } else if (role == SortRole) {
        switch (column) {
        case Close: return pick.close;
        case Increase: return pick.increase;
        case Volume: return pick.volume;
        default: return data(index, Qt::DisplayRole);
        }
    } else if (role == Qt::ForegroundRole && column == Increase && pick.increase != 0) {
        return QBrush(pick.increase > 0 ? QColor(Qt::red) : QColor(Qt::darkGreen));
    } else if (role == Qt::TextAlignmentRole && column >= Close) {
        return int(Qt::AlignRight | Qt::AlignVCenter);
    }
    return {};
}

QVariant PickTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const char *const kHeaders[ColumnCount] = {"代码", "信号日期", "收盘", "涨幅", "成交量"};
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= ColumnCount)
        return QAbstractTableModel::headerData(section, orientation, role);
    return QString::fromUtf8(kHeaders[section]);
}
