#include "StockThreadTarget.h"

void StockThreadTarget::setFiles(const StockFileList &files)
{
    if (!isRunning())
        m_files = files;
}

void StockThreadTarget::setStrategy(const QString &scriptText, const StrategyConfig &config)
{
    if (isRunning())
        return;
    m_scriptText = scriptText;
    m_config = config;
}

void StockThreadTarget::run()
{
    const BacktestEngine engine(m_scriptText, m_config);
    ReportMarket market;
    m_book = engine.run(
        m_files, m_jobs, [this](int percent, const QString &path) { emit updateStock(percent, path); },
        [&market](int fileIndex, const StockSeries &series) {
            market.addStock(fileIndex, series.code, series.view());
        },
        &m_effects);
    // Built here, off the interface thread, so the window never waits for it.
    m_report = computeReport(reportTradesOf(m_book), market, m_config.report);
    emit updateFinished();
}
