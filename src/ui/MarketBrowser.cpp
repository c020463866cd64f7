#include "MarketBrowser.h"

#include "ChartNavigator.h"
#include "MarketTableModel.h"
#include "StockListView.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QRegularExpression>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QVBoxLayout>
#include <QtConcurrent>

namespace {

// Each reading thread keeps its loader and series, and with them their
// buffers, from file to file.
StockSummary summaryOf(const QString &path, const KLineSource &source)
{
    thread_local StockLoader loader;
    thread_local StockSeries series;
    return summarizeStock(path, source, loader, series).value_or(StockSummary());
}

} // namespace

MarketBrowser::MarketBrowser(const KLineSource &source, QWidget *parent)
    : QWidget(parent, Qt::Window), m_source(source), m_stocks(new MarketTableModel(this)),
      m_sorted(new QSortFilterProxyModel(this)), m_prefix(new QLineEdit(this)), m_count(new QLabel(this)),
      m_table(new StockListView(this)), m_progress(new QProgressBar(this))
{
    setWindowTitle(QStringLiteral("行情"));
    setWindowIcon(QIcon(QStringLiteral(":logo/orvel.png")));
    m_sorted->setSourceModel(m_stocks);
    m_sorted->setSortRole(MarketTableModel::SortRole);
    m_sorted->setFilterKeyColumn(MarketTableModel::Code);
    m_table->setModel(m_sorted);
    m_table->sortByColumn(MarketTableModel::Code, Qt::AscendingOrder);
    m_prefix->setPlaceholderText(QStringLiteral("输入代码"));
    m_prefix->setClearButtonEnabled(true);
    m_progress->setTextVisible(false);

    auto *filterRow = new QHBoxLayout;
    filterRow->addWidget(new QLabel(QStringLiteral("代码:"), this));
    filterRow->addWidget(m_prefix, 1);
    filterRow->addWidget(m_count);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(filterRow);
    layout->addWidget(m_table, 1);
    layout->addWidget(m_progress);
    resize(560, 600);

    m_navigator = new ChartNavigator(m_table, MarketTableModel::Code,
                                     [this](const QString &code) { return seriesOf(code); });
    connect(m_prefix, &QLineEdit::textChanged, this, &MarketBrowser::filterCodes);
    connect(m_prefix, &QLineEdit::returnPressed, this, &MarketBrowser::openFirstOrCurrent);
    connect(&m_reading, &QFutureWatcher<StockSummary>::resultsReadyAt, this, &MarketBrowser::takeRows);
    connect(&m_reading, &QFutureWatcher<StockSummary>::progressRangeChanged, m_progress,
            &QProgressBar::setRange);
    connect(&m_reading, &QFutureWatcher<StockSummary>::progressValueChanged, m_progress,
            &QProgressBar::setValue);
    connect(&m_reading, &QFutureWatcher<StockSummary>::finished, this, &MarketBrowser::finishReading);
    startReading();
}

MarketBrowser::~MarketBrowser()
{
    m_reading.cancel();
    m_reading.waitForFinished();
}

void MarketBrowser::startReading()
{
    m_clock.start();
    const KLineSource source = m_source;
    // Listing reads names only, quickly; the files themselves are read on the workers.
    m_reading.setFuture(QtConcurrent::mapped(
        source.list(), [source](const QString &path) { return summaryOf(path, source); }));
    showCount();
}

void MarketBrowser::takeRows(int begin, int end)
{
    std::vector<StockSummary> rows;
    rows.reserve(size_t(end - begin));
    for (int i = begin; i < end; ++i) {
        StockSummary stock = m_reading.resultAt(i);
        if (!stock.code.isEmpty())
            rows.push_back(std::move(stock));
    }
    m_stocks->append(std::move(rows));
    showCount();
}

void MarketBrowser::finishReading()
{
    m_readingTime = m_clock.elapsed();
    m_progress->hide();
    showCount();
    emit readingFinished();
}

void MarketBrowser::filterCodes(const QString &prefix)
{
    m_sorted->setFilterRegularExpression(
        QRegularExpression(QLatin1Char('^') + QRegularExpression::escape(prefix)));
    showCount();
}

// Typing a code and Enter opens it at once.
void MarketBrowser::openFirstOrCurrent()
{
    if (!m_table->currentIndex().isValid() && m_sorted->rowCount() > 0)
        m_table->setCurrentIndex(m_sorted->index(0, MarketTableModel::Code));
    m_navigator->openCurrent();
}

void MarketBrowser::showCount()
{
    m_count->setText(QStringLiteral("%1 / %2 只").arg(m_sorted->rowCount()).arg(m_stocks->rowCount()));
}

const StockSeries *MarketBrowser::seriesOf(const QString &code)
{
    const QModelIndexList found = m_stocks->match(m_stocks->index(0, MarketTableModel::Code), Qt::DisplayRole,
                                                  code, 1, Qt::MatchExactly);
    if (found.isEmpty())
        return nullptr;
    m_loader.load(m_stocks->stock(found.first().row()).path, m_source, m_shown);
    return &m_shown;
}
