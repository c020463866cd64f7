#include "ReportPlots.h"

#include <qcustomplot.h>

#include <QBuffer>

namespace {

const QColor kGain(200, 16, 46);
const QColor kLoss(21, 128, 61);

// About six dates along the axis, at whole days.
QSharedPointer<QCPAxisTickerText> dateTicker(const StrategyReport &report)
{
    auto ticker = QSharedPointer<QCPAxisTickerText>::create();
    const int days = int(report.daily.size());
    const int step = std::max(1, days / 6);
    for (int day = 0; day < days; day += step)
        ticker->addTick(day, report.daily[size_t(day)].date);
    return ticker;
}

QCPGraph *line(QCustomPlot *plot, QCPAxisRect *rect, const QString &name, const QColor &colour)
{
    QCPGraph *graph = plot->addGraph(rect->axis(QCPAxis::atBottom), rect->axis(QCPAxis::atLeft));
    graph->setName(name);
    graph->setPen(QPen(colour, 1.5));
    return graph;
}

QByteArray png(QCustomPlot *plot, int width, int height)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    plot->toPixmap(width, height).save(&buffer, "PNG");
    return bytes;
}

} // namespace

namespace ReportPlots {

void plotAccount(QCustomPlot *plot, const StrategyReport &report)
{
    plot->clearGraphs();
    plot->plotLayout()->clear();
    auto *top = new QCPAxisRect(plot);
    auto *bottom = new QCPAxisRect(plot);
    plot->plotLayout()->addElement(0, 0, top);
    plot->plotLayout()->addElement(1, 0, bottom);
    plot->plotLayout()->setRowStretchFactors({3, 1});
    auto *group = new QCPMarginGroup(plot);
    top->setMarginGroup(QCP::msLeft | QCP::msRight, group);
    bottom->setMarginGroup(QCP::msLeft | QCP::msRight, group);

    QCPGraph *account = line(plot, top, QStringLiteral("账户"), kGain);
    QCPGraph *market = line(plot, top, QStringLiteral("市场"), QColor(90, 90, 90));
    QCPGraph *drawdown = line(plot, bottom, QStringLiteral("回撤"), kLoss);
    drawdown->setBrush(QColor(21, 128, 61, 60));
    for (size_t day = 0; day < report.daily.size(); ++day) {
        const DailyFigures &d = report.daily[day];
        account->addData(double(day), d.equity);
        market->addData(double(day), d.market);
        drawdown->addData(double(day), -d.drawdown);
    }
    top->axis(QCPAxis::atLeft)->setLabel(QStringLiteral("权益（元）"));
    top->axis(QCPAxis::atLeft)->setNumberFormat(QStringLiteral("f"));
    top->axis(QCPAxis::atLeft)->setNumberPrecision(0);
    bottom->axis(QCPAxis::atLeft)->setLabel(QStringLiteral("回撤 %"));
    top->axis(QCPAxis::atBottom)->setTicker(dateTicker(report));
    bottom->axis(QCPAxis::atBottom)->setTicker(dateTicker(report));
    top->axis(QCPAxis::atBottom)->setTickLabels(false);
    plot->rescaleAxes();
    top->axis(QCPAxis::atLeft)->scaleRange(1.1);
    bottom->axis(QCPAxis::atLeft)->setRangeUpper(0);

    auto *legend = new QCPLegend;
    top->insetLayout()->addElement(legend, Qt::AlignTop | Qt::AlignLeft);
    legend->setLayer(QStringLiteral("legend"));
    legend->addItem(new QCPPlottableLegendItem(legend, account));
    legend->addItem(new QCPPlottableLegendItem(legend, market));

    // Dragging or zooming either part moves both along the dates.
    for (QCPAxisRect *rect : {top, bottom}) {
        rect->setRangeDrag(Qt::Horizontal);
        rect->setRangeZoom(Qt::Horizontal);
    }
    QCPAxis *topX = top->axis(QCPAxis::atBottom);
    QCPAxis *bottomX = bottom->axis(QCPAxis::atBottom);
    QObject::connect(topX, qOverload<const QCPRange &>(&QCPAxis::rangeChanged), bottomX,
                     qOverload<const QCPRange &>(&QCPAxis::setRange));
    QObject::connect(bottomX, qOverload<const QCPRange &>(&QCPAxis::rangeChanged), topX,
                     qOverload<const QCPRange &>(&QCPAxis::setRange));
    plot->setInteractions(QCP::iRangeDrag | QCP::iRangeZoom);
}

void plotHistogram(QCustomPlot *plot, const StrategyReport &report)
{
    plot->clearPlottables();
    auto *gains = new QCPBars(plot->xAxis, plot->yAxis);
    auto *losses = new QCPBars(plot->xAxis, plot->yAxis);
    for (auto [bars, colour] : {std::pair{gains, kGain}, std::pair{losses, kLoss}}) {
        bars->setWidth(0.9);
        bars->setPen(Qt::NoPen);
        bars->setBrush(colour);
    }
    for (const HistogramBin &bin : report.histogram)
        (bin.from >= 0 ? gains : losses)->addData(double(bin.from) + 0.5, bin.count);
    plot->xAxis->setLabel(QStringLiteral("单笔收益 %"));
    plot->yAxis->setLabel(QStringLiteral("交易次数"));
    plot->rescaleAxes();
    plot->yAxis->setRangeLower(0);
    plot->yAxis->scaleRange(1.1, plot->yAxis->range().lower);
    plot->setInteractions(QCP::iRangeDrag | QCP::iRangeZoom);
    plot->axisRect()->setRangeDrag(Qt::Horizontal);
    plot->axisRect()->setRangeZoom(Qt::Horizontal);
}

ReportCharts render(const StrategyReport &report)
{
    ReportCharts charts;
    QCustomPlot account;
    plotAccount(&account, report);
    charts.account = png(&account, 960, 480);
    if (!report.histogram.empty()) {
        QCustomPlot histogram;
        plotHistogram(&histogram, report);
        charts.histogram = png(&histogram, 960, 320);
    }
    return charts;
}

} // namespace ReportPlots
