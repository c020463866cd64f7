#include "StockListViewStrategy.h"

#include "OrderTableWidgetItem.h"

namespace {

enum Column { Code, BuyDate, BuyPrice, SaleDate, SalePrice, HoldDays, Gain, SaleType };

QString gainText(double buyPrice, double salePrice)
{
    const double gain = buyPrice > 0 ? (salePrice - buyPrice) * 100 / buyPrice : 0;
    return QString::number(gain, 'f', 2);
}

} // namespace

StockListViewStrategy::StockListViewStrategy(QWidget *parent) : StockListView(parent)
{
    setHeaders({QStringLiteral("代码"), QStringLiteral("买入日期"), QStringLiteral("买入价位"),
                QStringLiteral("卖出日期"), QStringLiteral("卖出价位"), QStringLiteral("持股天数"),
                QStringLiteral("涨幅"), QStringLiteral("卖出类型")});
    setColumnWidth(Code, 48);
    for (int column = BuyDate; column < SaleType; ++column)
        setColumnWidth(column, 72);
    setColumnWidth(SaleType, 86);
}

void StockListViewStrategy::appendRow(const StockRow &row)
{
    const double buyPrice = row.value(2).toDouble();
    const double salePrice = row.value(4).toDouble();
    const int index = newRow();
    setItem(index, Code, new QTableWidgetItem(row.value(0)));
    setItem(index, BuyDate, new QTableWidgetItem(row.value(1)));
    setItem(index, BuyPrice, new OrderTableWidgetItem(QString::number(buyPrice, 'g')));
    setItem(index, SaleDate, new QTableWidgetItem(row.value(3)));
    setItem(index, SalePrice, new OrderTableWidgetItem(QString::number(salePrice, 'g')));
    setItem(index, HoldDays, new QTableWidgetItem(row.value(5)));
    setItem(index, Gain, new OrderTableWidgetItem(gainText(buyPrice, salePrice)));
    setItem(index, SaleType, new QTableWidgetItem(row.value(6)));
}
