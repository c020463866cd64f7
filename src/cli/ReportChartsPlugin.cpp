#include "ReportChartsPlugin.h"

#include "BesideProgram.h"

#include <QLibrary>

namespace {

using MakeApplication = QCoreApplication *(*)(int *argc, char **argv);
using RenderCharts = void (*)(const StrategyReport *report, ReportCharts *charts);

RenderCharts renderCharts = nullptr;

} // namespace

namespace ReportChartsPlugin {

std::unique_ptr<QCoreApplication> makeApplication(int &argc, char **argv, bool charts)
{
    if (charts) {
        QLibrary plugin(besideProgram(QStringLiteral("liborvel_report_charts_plugin")));
        const auto make = reinterpret_cast<MakeApplication>(plugin.resolve("orvelChartsApplication"));
        renderCharts = reinterpret_cast<RenderCharts>(plugin.resolve("orvelRenderCharts"));
        if (make && renderCharts)
            return std::unique_ptr<QCoreApplication>(make(&argc, argv));
        renderCharts = nullptr;
    }
    return std::make_unique<QCoreApplication>(argc, argv);
}

ReportCharts render(const StrategyReport &report)
{
    ReportCharts charts;
    if (renderCharts)
        renderCharts(&report, &charts);
    return charts;
}

} // namespace ReportChartsPlugin
