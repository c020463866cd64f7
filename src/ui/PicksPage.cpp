#include "PicksPage.h"

#include "PickTableModel.h"
#include "StockListView.h"
#include "TableCsvExport.h"

#include <QHeaderView>
#include <QLabel>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QVBoxLayout>

PicksPage::PicksPage(ChartNavigator::Lookup lookup, QWidget *parent)
    : QWidget(parent), m_picks(new PickTableModel(this)), m_heading(new QLabel(this)),
      m_table(new StockListView(this))
{
    auto *sorted = new QSortFilterProxyModel(this);
    sorted->setSourceModel(m_picks);
    sorted->setSortRole(PickTableModel::SortRole);
    m_table->setModel(sorted);
    TableCsvExport::addAction(m_table, QStringLiteral("picks.csv"));

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_heading);
    layout->addWidget(m_table, 1);
    m_navigator = new ChartNavigator(m_table, PickTableModel::Code, std::move(lookup));
    // One click is enough here, as in the trade table.
    connect(m_table, &QTableView::clicked, m_navigator, [this] { m_navigator->openCurrent(); });
}

void PicksPage::setPicks(std::vector<StockPick> picks)
{
    m_heading->setText(picks.empty() ? QStringLiteral("最新交易日没有股票满足买入条件")
                                     : QStringLiteral("%1 只股票在 %2 满足全部买入条件, 下一交易日开盘可买入")
                                           .arg(picks.size())
                                           .arg(picks.front().date));
    m_picks->setPicks(std::move(picks));
}
