#include "StrategyViewWidget.h"

#include "CandlestickView.h"
#include "LoadedStocks.h"
#include "OrvelTitle.h"
#include "ReportPage.h"
#include "StockListViews.h"
#include "market/TextFile.h"

#include <QTabWidget>
#include <QVBoxLayout>

namespace {

constexpr int kStrategyView = 6;
constexpr int kChartDays = 45;

StockRow rowOf(const TradeRecord &trade)
{
    return {trade.code,
            trade.buyDate,
            QString::number(trade.buyPrice, 'g'),
            trade.saleDate,
            QString::number(trade.salePrice, 'g'),
            QString::number(trade.holdDays),
            trade.status};
}

// Trades carry their dates as the engine decoded them, so a day is compared
// in the same reading: dates that are not plain ASCII match too.
int indexOfDate(const StockSeries &series, const QString &date)
{
    for (int i = 0; i < series.size(); ++i) {
        if (TextFile::decodeDate(series.bars[size_t(i)].date) == date)
            return i;
    }
    return -1;
}

} // namespace

StrategyViewWidget::StrategyViewWidget(QWidget *parent)
    : QDialog(parent), m_chart(new CandlestickView(this)), m_table(createStockListView(kStrategyView, this)),
      m_reportPage(new ReportPage(this))
{
    setWindowTitle(orvelWindowTitle());
    setWindowIcon(QIcon(QStringLiteral(":logo/orvel.png")));
    auto *tabs = new QTabWidget(this);
    auto *trades = new QWidget(tabs);
    auto *layout = new QVBoxLayout(trades);
    m_chart->setFixedHeight(180);
    layout->addWidget(m_chart);
    layout->addWidget(m_table);
    tabs->addTab(trades, QStringLiteral("交易"));
    tabs->addTab(m_reportPage, QStringLiteral("统计"));
    (new QVBoxLayout(this))->addWidget(tabs);
    setFixedWidth(620);
    connect(m_table, SIGNAL(cellClicked(int, int)), this, SLOT(onClick(int, int)));
}

void StrategyViewWidget::fill(const std::vector<TradeRecord> &trades)
{
    m_table->clearContents();
    m_table->setRowCount(0);
    for (const TradeRecord &trade : trades)
        m_table->addStock(rowOf(trade));
}

void StrategyViewWidget::setReport(const StrategyReport &report) { m_reportPage->setReport(report); }

void StrategyViewWidget::onClick(int row, int)
{
    const QTableWidgetItem *code = m_table->item(row, 0);
    const QTableWidgetItem *buyDate = m_table->item(row, 1);
    if (!m_stocks || !code || !buyDate)
        return;
    const StockSeries *series = m_stocks->find(code->text());
    if (!series)
        return;
    const int index = indexOfDate(*series, buyDate->text());
    if (index >= 0)
        m_chart->showData(kChartDays, *series, index);
}
