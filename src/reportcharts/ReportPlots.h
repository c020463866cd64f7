#pragma once

#include "report/ReportHtml.h"

class QCustomPlot;

// The report's charts, the same on the 统计 page and in "report.html".
namespace ReportPlots {

// The account against the market above, the account's drawdown below; the
// two share the date axis, which the mouse drags and zooms.
void plotAccount(QCustomPlot *plot, const StrategyReport &report);

// How many trades returned each whole percent; gains red, losses green.
void plotHistogram(QCustomPlot *plot, const StrategyReport &report);

// Both charts as PNG pictures, drawn off screen. Needs a QApplication.
ReportCharts render(const StrategyReport &report);

} // namespace ReportPlots
