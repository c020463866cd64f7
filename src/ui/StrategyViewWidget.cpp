#include "StrategyViewWidget.h"

#include "CandlestickView.h"
#include "LoadedStocks.h"
#include "OrvelTitle.h"
#include "PicksPage.h"
#include "ReportPage.h"
#include "StockListViewStrategy.h"
#include "TableCsvExport.h"

#include <QHeaderView>
#include <QSplitter>
#include <QTabWidget>
#include <QVBoxLayout>

StrategyViewWidget::StrategyViewWidget(QWidget *parent)
    : QDialog(parent), m_chart(new CandlestickView(this)), m_table(new StockListViewStrategy(this)),
      m_reportPage(new ReportPage(this)),
      m_picksPage(new PicksPage(
          [this](const QString &code) { return m_stocks ? m_stocks->find(code) : nullptr; }, this))
{
    setWindowTitle(orvelWindowTitle());
    setWindowIcon(QIcon(QStringLiteral(":logo/orvel.png")));
    setSizeGripEnabled(true);
    auto *tabs = new QTabWidget(this);
    // The chart takes what the user gives it; the table keeps a few rows.
    auto *trades = new QSplitter(Qt::Vertical, tabs);
    trades->setChildrenCollapsible(false);
    m_chart->setMinimumHeight(180);
    m_table->setMinimumHeight(80);
    trades->addWidget(m_chart);
    trades->addWidget(m_table);
    trades->setStretchFactor(0, 3);
    trades->setStretchFactor(1, 1);
    trades->setSizes({420, 180});
    tabs->addTab(trades, QStringLiteral("交易"));
    tabs->addTab(m_reportPage, QStringLiteral("统计"));
    tabs->addTab(m_picksPage, QStringLiteral("选股"));
    TableCsvExport::addAction(m_table, QStringLiteral("trades.csv"));
    (new QVBoxLayout(this))->addWidget(tabs);
    // Every column in view at first; the user may make it larger.
    int width = 0;
    for (int column = 0; column < m_table->horizontalHeader()->count(); ++column)
        width += m_table->columnWidth(column);
    resize(std::max(width + 60, 760), 640);
    connect(m_table, &StockListViewStrategy::tradeChosen, this, &StrategyViewWidget::onTradeChosen);
}

StrategyViewWidget::~StrategyViewWidget() = default;

void StrategyViewWidget::setStocks(std::unique_ptr<LoadedStocks> stocks) { m_stocks = std::move(stocks); }

void StrategyViewWidget::fill(std::vector<TradeRow> trades) { m_table->setTrades(std::move(trades)); }

void StrategyViewWidget::setPicks(std::vector<StockPick> picks) { m_picksPage->setPicks(std::move(picks)); }

void StrategyViewWidget::setReport(const StrategyReport &report) { m_reportPage->setReport(report); }

void StrategyViewWidget::onTradeChosen(const TradeRow &trade)
{
    if (const StockSeries *series = m_stocks ? m_stocks->find(trade.code) : nullptr)
        m_chart->showTrade(*series, trade);
}
