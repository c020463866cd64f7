#include "TradeTableModel.h"

#include "engine/TradeDate.h"

#include <QBrush>

void TradeTableModel::setTrades(std::vector<TradeRow> trades)
{
    beginResetModel();
    m_trades = std::move(trades);
    endResetModel();
}

int TradeTableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_trades.size());
}

int TradeTableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

double TradeTableModel::gainOf(const TradeRecord &trade)
{
    return trade.buyPrice > 0 ? (trade.salePrice - trade.buyPrice) * 100 / trade.buyPrice : 0;
}

QString TradeTableModel::text(const TradeRow &trade, int column) const
{
    switch (column) {
    case Code: return trade.code;
    case BuyDate: return TradeDate::text(trade.buyDate);
    case BuyPrice: return QString::number(trade.buyPrice, 'g');
    case SaleDate: return TradeDate::text(trade.saleDate);
    case SalePrice: return QString::number(trade.salePrice, 'g');
    case HoldDays: return QString::number(trade.holdDays);
    case Gain: return QString::number(gainOf(trade), 'f', 2);
    case SaleType: return statusText(trade.status);
    }
    return {};
}

QVariant TradeTableModel::sortKey(const TradeRow &trade, int column) const
{
    switch (column) {
    case BuyPrice: return trade.buyPrice;
    case SalePrice: return trade.salePrice;
    case HoldDays: return trade.holdDays;
    case Gain: return gainOf(trade);
    default: return text(trade, column);
    }
}

QVariant TradeTableModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const TradeRow &trade = m_trades[size_t(index.row())];
    switch (role) {
    case Qt::DisplayRole: return text(trade, index.column());
    case SortRole: return sortKey(trade, index.column());
    case Qt::ForegroundRole:
        // Gains in red, losses in green, as the market colours them.
        if (index.column() == Gain && gainOf(trade) != 0)
            return QBrush(gainOf(trade) > 0 ? QColor(Qt::red) : QColor(Qt::darkGreen));
        return {};
    default: return {};
    }
}

QVariant TradeTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const char *const kHeaders[ColumnCount] = {"代码",     "买入日期", "买入价位", "卖出日期",
                                                      "卖出价位", "持股天数", "涨幅",     "卖出类型"};
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= ColumnCount)
        return QAbstractTableModel::headerData(section, orientation, role);
    return QString::fromUtf8(kHeaders[section]);
}
