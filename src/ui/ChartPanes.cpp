#include "ChartPanes.h"

#include "ChartSeries.h"

#include <qcustomplot.h>

namespace {

const QColor kRising(180, 90, 90);
const QColor kFalling(100, 180, 110);
const QColor kAxisColour(170, 170, 170);
enum PaneRow { TitleRow, PriceRow, VolumeRow, IndicatorRow };
constexpr double kIndicatorStretch = 1.5;

// The lowest and highest of the values seen, NaN skipped.
struct Extent {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    void add(double value)
    {
        if (std::isnan(value))
            return;
        low = std::min(low, value);
        high = std::max(high, value);
    }
    // With room around the values, so none touches the pane's edge.
    QCPRange padded(double fraction) const
    {
        if (low > high)
            return QCPRange(0, 1);
        const double room = high > low ? (high - low) * fraction : std::max(std::abs(high) * fraction, 0.01);
        return QCPRange(low - room, high + room);
    }
};

// Labels ticks with the bars' dates, on whole days only.
class DayTicker : public QCPAxisTicker {
public:
    QStringList dates;

protected:
    double getTickStep(const QCPRange &range) override
    {
        const double days = range.size() / kChartDay / (mTickCount + 1e-10);
        return std::max(1.0, std::round(cleanMantissa(days))) * kChartDay;
    }
    QString getTickLabel(double tick, const QLocale &, QChar, int) override
    {
        const qsizetype index = qRound64(tick / kChartDay);
        return index >= 0 && index < dates.size() ? dates[index] : QString();
    }
};

// Volumes in the units a trader reads them in: 万 and 亿 shares.
class VolumeTicker : public QCPAxisTicker {
protected:
    QString getTickLabel(double tick, const QLocale &locale, QChar, int) override
    {
        if (std::abs(tick) >= 1e8)
            return locale.toString(tick / 1e8, 'g', 3) + QStringLiteral("亿");
        if (std::abs(tick) >= 1e4)
            return locale.toString(tick / 1e4, 'g', 4) + QStringLiteral("万");
        return locale.toString(tick, 'g', 4);
    }
};

void styleAxes(QCPAxisRect *rect)
{
    for (QCPAxis *axis : rect->axes()) {
        axis->setBasePen(QPen(kAxisColour));
        axis->setTickPen(QPen(kAxisColour));
        axis->setSubTickPen(QPen(kAxisColour));
        axis->setTickLabelColor(kAxisColour);
        axis->grid()->setPen(QPen(QColor(60, 60, 60), 0, Qt::DotLine));
    }
}

} // namespace

ChartPanes::ChartPanes(QCustomPlot *plot, ChartSeries &series)
    : m_plot(plot), m_series(series), m_price(plot->axisRect()), m_volume(new QCPAxisRect(plot)),
      m_indicator(new QCPAxisRect(plot))
{
    QCPLayoutGrid *layout = plot->plotLayout();
    layout->addElement(VolumeRow, 0, m_volume);
    layout->addElement(IndicatorRow, 0, m_indicator);
    layout->setRowStretchFactors({1, 5, 1.2, kIndicatorStretch});
    layout->setRowSpacing(0);
    auto *margins = new QCPMarginGroup(plot);
    auto ticker = QSharedPointer<DayTicker>::create();
    for (QCPAxisRect *pane : all()) {
        pane->setMarginGroup(QCP::msLeft | QCP::msRight, margins);
        pane->axis(QCPAxis::atBottom)->setTicker(ticker);
        pane->axis(QCPAxis::atBottom)->setTickLabels(pane == m_indicator);
        pane->axis(QCPAxis::atLeft)->ticker()->setTickCount(pane == m_price ? 5 : 2);
        styleAxes(pane);
    }
    for (const ChartLine &line : chartAverageLines())
        m_averages.push_back(addLine(m_price, line));
    setUpCandles();
    setUpVolume();
}

void ChartPanes::setUpCandles()
{
    m_candles = new QCPFinancial(m_price->axis(QCPAxis::atBottom), m_price->axis(QCPAxis::atLeft));
    m_candles->setName(QStringLiteral("Candlestick"));
    m_candles->setChartStyle(QCPFinancial::csCandlestick);
    m_candles->setWidth(kChartDay * 0.9);
    m_candles->setTwoColored(true);
    m_candles->setBrushPositive(kRising);
    m_candles->setPenPositive(QPen(kRising));
    m_candles->setBrushNegative(kFalling);
    m_candles->setPenNegative(QPen(kFalling));
}

// Each day's volume is drawn as its candle is: red up, green down.
void ChartPanes::setUpVolume()
{
    const auto addVolume = [this](const QColor &colour) {
        auto *bars = new QCPBars(m_volume->axis(QCPAxis::atBottom), m_volume->axis(QCPAxis::atLeft));
        bars->setName(QStringLiteral("volume"));
        bars->setWidth(kChartDay * 0.8);
        bars->setPen(QPen(colour));
        bars->setBrush(colour);
        return bars;
    };
    m_volumeUp = addVolume(kRising);
    m_volumeDown = addVolume(kFalling);
    m_volume->axis(QCPAxis::atLeft)->setTicker(QSharedPointer<VolumeTicker>::create());
    m_volume->axis(QCPAxis::atLeft)->ticker()->setTickCount(2);
}

QCPGraph *ChartPanes::addLine(QCPAxisRect *pane, const ChartLine &line)
{
    auto *graph = new QCPGraph(pane->axis(QCPAxis::atBottom), pane->axis(QCPAxis::atLeft));
    graph->setName(line.name());
    graph->setPen(QPen(line.colour));
    return graph;
}

void ChartPanes::fill(ChartIndicator indicator, const DmiPeriods &dmi)
{
    QVector<double> open, high, low, close;
    QVector<double> upKeys, upVolumes, downKeys, downVolumes;
    for (int i = 0; i < m_series.size(); ++i) {
        const Stock &bar = m_series.bars[size_t(i)];
        open << bar.open;
        high << bar.high;
        low << bar.low;
        close << bar.close;
        // A candle is red when it closes at or above its open.
        (bar.close >= bar.open ? upKeys : downKeys) << m_series.keys[i];
        (bar.close >= bar.open ? upVolumes : downVolumes) << bar.volume;
    }
    m_candles->setData(m_series.keys, open, high, low, close, true);
    m_volumeUp->setData(upKeys, upVolumes, true);
    m_volumeDown->setData(downKeys, downVolumes, true);
    const std::vector<ChartLine> averages = chartAverageLines();
    for (size_t i = 0; i < averages.size(); ++i)
        fillLine(m_averages[i], averages[i]);
    m_price->axis(QCPAxis::atBottom)->ticker().staticCast<DayTicker>()->dates = m_series.dates;
    fillIndicator(indicator, dmi);
}

// Bars without a value leave a gap rather than a point at zero.
void ChartPanes::fillLine(QCPGraph *graph, const ChartLine &line)
{
    const std::vector<double> &values = m_series.line(line.term);
    QVector<double> keys, points;
    for (size_t i = 0; i < values.size(); ++i) {
        if (!std::isnan(values[i])) {
            keys << m_series.keys[qsizetype(i)];
            points << values[i];
        }
    }
    graph->setData(keys, points, true);
}

// BOLL's bands go over the candles; the other indicators fill their pane.
void ChartPanes::fillIndicator(ChartIndicator indicator, const DmiPeriods &dmi)
{
    for (QCPGraph *graph : m_indicatorGraphs)
        m_plot->removeGraph(graph);
    m_indicatorGraphs.clear();
    const bool overCandles = indicator == ChartIndicator::Boll;
    placeIndicatorPane(!overCandles);
    QCPAxisRect *pane = overCandles ? m_price : m_indicator;
    const std::vector<ChartLine> lines = chartIndicatorLines(indicator, dmi);
    for (const ChartLine &line : lines) {
        QCPGraph *graph = addLine(pane, line);
        fillLine(graph, line);
        m_indicatorGraphs.push_back(graph);
    }
    if (indicator == ChartIndicator::Macd)
        splitMacdBar(pane);
    m_priceLines = chartAverageLines();
    m_paneLines.clear();
    (overCandles ? m_priceLines : m_paneLines)
        .insert((overCandles ? m_priceLines : m_paneLines).end(), lines.begin(), lines.end());
}

// Left out of the layout while it has nothing to show, so the other panes take its room;
// the dates go under the lowest pane.
void ChartPanes::placeIndicatorPane(bool shown)
{
    QCPLayoutGrid *layout = m_plot->plotLayout();
    if (!shown && layout->hasElement(IndicatorRow, 0)) {
        layout->take(m_indicator);
        layout->simplify();
    } else if (shown && !layout->hasElement(IndicatorRow, 0)) {
        layout->addElement(IndicatorRow, 0, m_indicator);
        layout->setRowStretchFactor(IndicatorRow, kIndicatorStretch);
    }
    m_indicator->setVisible(shown);
    m_volume->axis(QCPAxis::atBottom)->setTickLabels(!shown);
}

// The bar as columns from zero, red above and green below: two graphs,
// both named after the term.
void ChartPanes::splitMacdBar(QCPAxisRect *pane)
{
    const ChartLine line{QStringLiteral("macd.bar,0"), kRising};
    QCPGraph *above = m_indicatorGraphs.front();
    QCPGraph *below = addLine(pane, {line.term, kFalling});
    m_indicatorGraphs.push_back(below);
    const std::vector<double> &values = m_series.line(line.term);
    QVector<double> aboveKeys, aboveValues, belowKeys, belowValues;
    for (size_t i = 0; i < values.size(); ++i) {
        if (std::isnan(values[i]))
            continue;
        (values[i] >= 0 ? aboveKeys : belowKeys) << m_series.keys[qsizetype(i)];
        (values[i] >= 0 ? aboveValues : belowValues) << values[i];
    }
    above->setPen(QPen(kRising));
    above->setData(aboveKeys, aboveValues, true);
    below->setData(belowKeys, belowValues, true);
    for (QCPGraph *graph : {above, below})
        graph->setLineStyle(QCPGraph::lsImpulse);
}

void ChartPanes::fitValues()
{
    const QCPRange days = m_price->axis(QCPAxis::atBottom)->range();
    const int first = std::max(0, int(std::ceil(days.lower / kChartDay)));
    const int last = std::min(m_series.size() - 1, int(std::floor(days.upper / kChartDay)));
    if (first > last)
        return;
    Extent prices, volumes, values;
    volumes.add(0);
    for (int i = first; i <= last; ++i) {
        const Stock &bar = m_series.bars[size_t(i)];
        prices.add(bar.low);
        prices.add(bar.high);
        volumes.add(bar.volume);
    }
    const auto addLines = [&](const std::vector<ChartLine> &lines, Extent &extent) {
        for (const ChartLine &line : lines) {
            const std::vector<double> &points = m_series.line(line.term);
            for (int i = first; i <= last; ++i)
                extent.add(points[size_t(i)]);
        }
    };
    addLines(m_priceLines, prices);
    addLines(m_paneLines, values);
    m_price->axis(QCPAxis::atLeft)->setRange(prices.padded(0.05));
    m_volume->axis(QCPAxis::atLeft)->setRange(0, volumes.high * 1.05);
    m_indicator->axis(QCPAxis::atLeft)->setRange(values.padded(0.05));
}
