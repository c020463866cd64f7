#include "BacktestReport.h"

#include "CliOutput.h"
#include "ReportChartsPlugin.h"
#include "report/ReportFiles.h"
#include "report/ReportTrade.h"

BacktestRun::StockObserver BacktestReport::observer()
{
    return [this](int fileIndex, const StockSeries &series) {
        m_market.addStock(fileIndex, series.code, series.view());
    };
}

bool BacktestReport::write(const QString &dir, const TradeBook &book, const ReportSettings &settings,
                           const std::optional<RuleEffects> &rules)
{
    StrategyReport report = computeReport(reportTradesOf(book), m_market, settings);
    report.rules = rules;
    const QString error = writeReportFiles(dir, report, ReportChartsPlugin::render(report));
    if (!error.isEmpty())
        CliOutput::err(QStringLiteral("无法写入报告 / cannot write the report: %1\n").arg(error));
    return error.isEmpty();
}
