// What orvel-cli loads for a report: its charts need widgets, which no other
// command line run should load at start-up.
#include "ReportPlots.h"

#include <QApplication>

extern "C" {

// The application for a run that draws charts: widgets, off screen. `argc`
// must outlive it.
Q_DECL_EXPORT QCoreApplication *orvelChartsApplication(int *argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return new QApplication(*argc, argv);
}

Q_DECL_EXPORT void orvelRenderCharts(const StrategyReport *report, ReportCharts *charts)
{
    *charts = ReportPlots::render(*report);
}
}
