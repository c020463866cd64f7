#include "CandlestickView.h"

#include "ChartCrosshair.h"
#include "ChartPanes.h"
#include "OrvelStockMsgBox.h"
#include "TradeMarks.h"
#include "TradeTableModel.h"
#include "engine/TradeDate.h"
#include "market/SafeFile.h"
#include "market/TextFile.h"

#include <QBuffer>
#include <QComboBox>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QScopedValueRollback>
#include <QVBoxLayout>
#include <qcustomplot.h>

namespace {

constexpr int kDaysBefore = 20; // the days before a buy that led to its signal
constexpr int kDaysAfter = 45;
constexpr int kFewestDays = 10; // zooming in stops here

} // namespace

CandlestickView::CandlestickView(QWidget *parent) : QWidget(parent)
{
    setWindowTitle(QStringLiteral("股票日K"));
    setWindowIcon(QIcon(QStringLiteral(":logo/orvel.png")));
    setFocusPolicy(Qt::StrongFocus);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    setUpPicker();
    setUpPlot();
    setUpInteractions();
    layout->addWidget(m_plot, 1);
}

CandlestickView::~CandlestickView() = default;

void CandlestickView::setUpPicker()
{
    m_picker = new QComboBox(this);
    for (ChartIndicator indicator :
         {ChartIndicator::Macd, ChartIndicator::Kdj, ChartIndicator::Boll, ChartIndicator::Dmi})
        m_picker->addItem(chartIndicatorText(indicator), int(indicator));
    // PageUp and PageDown move between stocks, not along this list.
    m_picker->setFocusPolicy(Qt::NoFocus);
    connect(m_picker, &QComboBox::currentIndexChanged, this,
            [this] { setIndicator(ChartIndicator(m_picker->currentData().toInt())); });
    auto *row = new QHBoxLayout;
    row->setContentsMargins(4, 2, 4, 0);
    row->addWidget(new QLabel(QStringLiteral("指标"), this));
    row->addWidget(m_picker);
    row->addStretch(1);
    static_cast<QVBoxLayout *>(layout())->addLayout(row);
}

void CandlestickView::setUpPlot()
{
    m_plot = new QCustomPlot(this);
    m_plot->setBackground(QBrush(Qt::black));
    m_plot->setLocale(QLocale(QLocale::Chinese, QLocale::China));
    m_plot->setMouseTracking(true);
    m_plot->installEventFilter(this);

    m_plot->plotLayout()->insertRow(0);
    QFont titleFont = font();
    titleFont.setPointSize(12);
    m_title = new QCPTextElement(m_plot, QStringLiteral("---"), titleFont);
    m_title->setTextColor(QColor(244, 244, 244, 255));
    m_plot->plotLayout()->addElement(0, 0, m_title);
    m_panes = std::make_unique<ChartPanes>(m_plot, m_series);
    m_marks = std::make_unique<TradeMarks>(m_plot, m_panes->price());
    m_crosshair = std::make_unique<ChartCrosshair>(
        m_plot, m_panes->price(), QList<QCPAxisRect *>{m_panes->volume(), m_panes->indicator()});
    m_panes->fillIndicator(m_indicator, m_dmi);
}

void CandlestickView::setUpInteractions()
{
    m_plot->setInteractions(QCP::iRangeDrag | QCP::iRangeZoom);
    for (QCPAxisRect *pane : m_panes->all()) {
        QCPAxis *days = pane->axis(QCPAxis::atBottom);
        pane->setRangeDrag(Qt::Horizontal);
        pane->setRangeZoom(Qt::Horizontal);
        pane->setRangeDragAxes({days});
        pane->setRangeZoomAxes({days});
        connect(days, qOverload<const QCPRange &>(&QCPAxis::rangeChanged), this,
                &CandlestickView::onTimeRangeChanged);
    }
    connect(m_plot, &QCustomPlot::mouseMove, this,
            [this](QMouseEvent *event) { m_crosshair->moveTo(m_series, event->position()); });
    m_plot->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_plot, &QWidget::customContextMenuRequested, this, &CandlestickView::showContextMenu);
}

void CandlestickView::setIndicator(ChartIndicator indicator)
{
    m_indicator = indicator;
    {
        const QSignalBlocker quiet(m_picker); // the pane is filled once, here
        m_picker->setCurrentIndex(m_picker->findData(int(indicator)));
    }
    m_panes->fillIndicator(m_indicator, m_dmi);
    m_panes->fitValues();
    m_plot->replot();
}

void CandlestickView::load(ChartSeries series)
{
    m_series = std::move(series);
    m_panes->fill(m_indicator, m_dmi);
    m_marks->clear();
    m_crosshair->hide();
}

bool CandlestickView::showTrade(const StockSeries &stock, const TradeRecord &trade)
{
    const QString buyDate = TradeDate::text(trade.buyDate);
    if (trade.status == TradeStatus::PendingBuy) {
        // Waiting for the open after the stock's last bar, which gave the signal.
        const int last = stock.size() - 1;
        if (last < 0 || !buyDate.startsWith(TextFile::decodeDate(stock.bars[size_t(last)].date)))
            return false;
        load(ChartSeries(stock));
        m_marks->markSignal(m_series.keys[last], m_series.bars[size_t(last)].low);
        setTitle(
            QStringLiteral("%1 %2 %3").arg(m_series.code, m_series.dates[last], statusText(trade.status)));
        showDays(last - kDaysBefore - kDaysAfter, last);
        return true;
    }
    ChartSeries series(stock);
    const int buy = series.indexOf(buyDate);
    if (buy < 0)
        return false;
    load(std::move(series));
    m_marks->markBuy(m_series.keys[buy], trade.buyPrice);
    const int sale = m_series.indexOf(TradeDate::text(trade.saleDate), buy);
    if (sale >= 0 && trade.closed) {
        m_marks->markSale(m_series.keys[sale], trade.salePrice);
        m_marks->shade(m_series.keys[buy], m_series.keys[sale]);
    }
    setTitle(QStringLiteral("%1 %2 涨幅 %3% %4")
                 .arg(m_series.code, buyDate, QString::number(TradeTableModel::gainOf(trade), 'f', 2),
                      statusText(trade.status)));
    showDays(buy - kDaysBefore, buy + kDaysAfter);
    return true;
}

void CandlestickView::showStock(const StockSeries &stock)
{
    if (stock.bars.empty())
        return;
    load(ChartSeries(stock));
    const int last = m_series.size() - 1;
    setTitle(QStringLiteral("%1 %2").arg(m_series.code, m_series.dates[last]));
    showDays(last - kDaysBefore - kDaysAfter, last);
}

// Shows the bars from `first` to `last`, moved within the history when it
// would run past either end.
void CandlestickView::showDays(int first, int last)
{
    const int shift = std::max(0, last - (m_series.size() - 1));
    first = std::max(0, first - shift);
    last -= shift;
    const QCPRange days((first - 0.5) * kChartDay, (last + 0.5) * kChartDay);
    if (timeAxis()->range() == days)
        onTimeRangeChanged(days);
    else
        timeAxis()->setRange(days);
    m_plot->replot();
}

void CandlestickView::setTitle(const QString &text)
{
    m_title->setText(text);
    setWindowTitle(text);
}

// Every pane shows the same days, never less than a few, nor far beyond
// the history; the prices follow.
void CandlestickView::onTimeRangeChanged(const QCPRange &requested)
{
    if (m_syncing || m_series.empty())
        return;
    const QScopedValueRollback guard(m_syncing, true);
    const double lowest = -5 * kChartDay;
    const double highest = (m_series.size() + 4) * kChartDay;
    const double width = std::clamp(requested.size(), kFewestDays * kChartDay, highest - lowest);
    double lower = requested.size() == width ? requested.lower : requested.center() - width / 2;
    lower = std::clamp(lower, lowest, highest - width);
    const QCPRange days(lower, lower + width);
    for (QCPAxisRect *pane : m_panes->all())
        pane->axis(QCPAxis::atBottom)->setRange(days);
    m_panes->fitValues();
}

QCPAxis *CandlestickView::timeAxis() const { return m_panes->price()->axis(QCPAxis::atBottom); }

QCPAxis *CandlestickView::priceAxis() const { return m_panes->price()->axis(QCPAxis::atLeft); }

QCPFinancial *CandlestickView::candles() const { return m_panes->candles(); }

QCPAxisRect *CandlestickView::volumePane() const { return m_panes->volume(); }

QCPAxisRect *CandlestickView::indicatorPane() const { return m_panes->indicator(); }

QString CandlestickView::titleText() const { return m_title->text(); }

QString CandlestickView::readoutText() const { return m_crosshair->text(); }

void CandlestickView::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_PageUp)
        emit previousStockRequested();
    else if (event->key() == Qt::Key_PageDown)
        emit nextStockRequested();
    else
        QWidget::keyPressEvent(event);
}

bool CandlestickView::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_plot && event->type() == QEvent::Leave)
        m_crosshair->hide();
    return QWidget::eventFilter(watched, event);
}

void CandlestickView::showContextMenu(const QPoint &position)
{
    QMenu menu(this);
    menu.addAction(QStringLiteral("保存图片"), this, &CandlestickView::askWhereToSave);
    menu.exec(m_plot->mapToGlobal(position));
}

void CandlestickView::askWhereToSave()
{
    QString path = QFileDialog::getSaveFileName(
        this, QStringLiteral("保存图片"),
        (m_series.code.isEmpty() ? QStringLiteral("chart") : m_series.code) + QStringLiteral(".png"),
        QStringLiteral("PNG (*.png)"));
    if (path.isEmpty())
        return;
    if (!path.endsWith(QLatin1String(".png"), Qt::CaseInsensitive))
        path += QStringLiteral(".png");
    const QString error = savePicture(path);
    if (!error.isEmpty())
        OrvelStockMsgBox(QStringLiteral("警告"), error, this).exec();
}

QString CandlestickView::savePicture(const QString &path)
{
    m_crosshair->hide(); // the picture shows the chart, not where the mouse happened to be
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    if (!m_plot->toPixmap().save(&buffer, "PNG"))
        return QStringLiteral("图片无法生成");
    return SafeFile::replace(path, png, SymlinkRule::FollowToRegularFile);
}
