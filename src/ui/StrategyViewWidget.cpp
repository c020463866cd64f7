#include "StrategyViewWidget.h"

#include "CandlestickView.h"
#include "LoadedStocks.h"
#include "OrvelTitle.h"
#include "ReportPage.h"
#include "StockListViewStrategy.h"
#include "engine/TradeDate.h"
#include "market/TextFile.h"

#include <QHeaderView>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

constexpr int kChartDays = 45;

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
    : QDialog(parent), m_chart(new CandlestickView(this)), m_table(new StockListViewStrategy(this)),
      m_reportPage(new ReportPage(this))
{
    setWindowTitle(orvelWindowTitle());
    setWindowIcon(QIcon(QStringLiteral(":logo/orvel.png")));
    setSizeGripEnabled(true);
    auto *tabs = new QTabWidget(this);
    auto *trades = new QWidget(tabs);
    auto *layout = new QVBoxLayout(trades);
    m_chart->setMinimumHeight(180);
    layout->addWidget(m_chart, 1);
    layout->addWidget(m_table, 2);
    tabs->addTab(trades, QStringLiteral("交易"));
    tabs->addTab(m_reportPage, QStringLiteral("统计"));
    (new QVBoxLayout(this))->addWidget(tabs);
    // Every column in view at first; the user may make it larger.
    int width = 0;
    for (int column = 0; column < m_table->horizontalHeader()->count(); ++column)
        width += m_table->columnWidth(column);
    resize(width + 60, 520);
    connect(m_table, &StockListViewStrategy::tradeChosen, this, &StrategyViewWidget::onTradeChosen);
}

StrategyViewWidget::~StrategyViewWidget() = default;

void StrategyViewWidget::setStocks(std::unique_ptr<LoadedStocks> stocks) { m_stocks = std::move(stocks); }

void StrategyViewWidget::fill(std::vector<TradeRecord> trades) { m_table->setTrades(std::move(trades)); }

void StrategyViewWidget::setReport(const StrategyReport &report) { m_reportPage->setReport(report); }

void StrategyViewWidget::onTradeChosen(const TradeRecord &trade)
{
    const StockSeries *series = m_stocks ? m_stocks->find(trade.code) : nullptr;
    if (!series)
        return;
    const int index = indexOfDate(*series, TradeDate::text(trade.buyDate));
    if (index >= 0)
        m_chart->showData(kChartDays, *series, index);
}
