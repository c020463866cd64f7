#include "StockListViewStrategy.h"

#include <QHeaderView>
#include <QSortFilterProxyModel>

StockListViewStrategy::StockListViewStrategy(QWidget *parent)
    : StockListView(parent), m_trades(new TradeTableModel(this)), m_sorted(new QSortFilterProxyModel(this))
{
    m_sorted->setSourceModel(m_trades);
    m_sorted->setSortRole(TradeTableModel::SortRole);
    setModel(m_sorted);
    // With many trades, measuring every row would cost more than the rows themselves.
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setStretchLastSection(true);
    fitColumns();
    connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex &current) {
                if (current.isValid())
                    emit tradeChosen(m_trades->trade(m_sorted->mapToSource(current).row()));
            });
}

void StockListViewStrategy::setTrades(std::vector<TradeRow> trades)
{
    m_trades->setTrades(std::move(trades));
}

// Wide enough for a six-digit code, a full date and a price in this
// desktop's font, whatever its size.
void StockListViewStrategy::fitColumns()
{
    const QFontMetrics metrics(font());
    const int padding = 2 * metrics.averageCharWidth() + 8;
    const auto widthOf = [&](const QString &sample, int column) {
        const QString header = m_trades->headerData(column, Qt::Horizontal).toString();
        return std::max(metrics.horizontalAdvance(sample), metrics.horizontalAdvance(header)) + padding;
    };
    const QString date = QStringLiteral("2026-12-31");
    const QString price = QStringLiteral("1234.56");
    const int widths[TradeTableModel::ColumnCount] = {
        widthOf(QStringLiteral("600000"), TradeTableModel::Code),
        widthOf(date, TradeTableModel::BuyDate),
        widthOf(price, TradeTableModel::BuyPrice),
        widthOf(date, TradeTableModel::SaleDate),
        widthOf(price, TradeTableModel::SalePrice),
        widthOf(QStringLiteral("999"), TradeTableModel::HoldDays),
        widthOf(QStringLiteral("-100.00"), TradeTableModel::Gain),
        widthOf(QStringLiteral("持股时间到期"), TradeTableModel::SaleType)};
    for (int column = 0; column < TradeTableModel::ColumnCount; ++column)
        setColumnWidth(column, widths[column]);
}
