#pragma once

#include "report/ReportHtml.h"

#include <QCoreApplication>

#include <memory>

// The report's charts come from a plugin beside orvel-cli, loaded only for a
// run that writes a report: drawing them needs the widget libraries, which
// every other run would otherwise load at start-up.
namespace ReportChartsPlugin {

// The application of this run: with widgets, off screen, when `charts` are
// wanted and the plugin loads; the core application otherwise.
std::unique_ptr<QCoreApplication> makeApplication(int &argc, char **argv, bool charts);

// The charts, or none when the plugin was not loaded.
ReportCharts render(const StrategyReport &report);

} // namespace ReportChartsPlugin
