#include "MarketTableModel.h"

#include <QBrush>

void MarketTableModel::append(std::vector<StockSummary> stocks)
{
    if (stocks.empty())
        return;
    const int first = int(m_stocks.size());
    beginInsertRows({}, first, first + int(stocks.size()) - 1);
    std::move(stocks.begin(), stocks.end(), std::back_inserter(m_stocks));
    endInsertRows();
}

void MarketTableModel::clear()
{
    beginResetModel();
    m_stocks.clear();
    endResetModel();
}

int MarketTableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_stocks.size());
}

int MarketTableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant MarketTableModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const StockSummary &stock = m_stocks[size_t(index.row())];
    const int column = index.column();
    if (role == Qt::DisplayRole) {
        switch (column) {
        case Code: return stock.code;
        case LastDate: return stock.lastDate;
        case LastClose: return QString::number(stock.lastClose, 'f', 2);
        case Increase: return stock.hasIncrease() ? QString::number(stock.lastIncrease, 'f', 2) : QString();
        case Days: return QString::number(stock.days);
        }
    } else if (role == SortRole) {
        switch (column) {
        case LastClose: return stock.lastClose;
        case Increase: return stock.hasIncrease() ? stock.lastIncrease : 0.0f;
        case Days: return stock.days;
        default: return data(index, Qt::DisplayRole);
        }
    } else if (role == Qt::ForegroundRole && column == Increase && stock.hasIncrease() &&
               stock.lastIncrease != 0) {
        // Rises in red, falls in green, as the market colours them.
        return QBrush(stock.lastIncrease > 0 ? QColor(Qt::red) : QColor(Qt::darkGreen));
    } else if (role == Qt::TextAlignmentRole && column >= LastClose) {
        return int(Qt::AlignRight | Qt::AlignVCenter);
    }
    return {};
}

QVariant MarketTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const char *const kHeaders[ColumnCount] = {"代码", "日期", "收盘", "涨幅", "天数"};
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= ColumnCount)
        return QAbstractTableModel::headerData(section, orientation, role);
    return QString::fromUtf8(kHeaders[section]);
}
