#pragma once

#include "BacktestEngine.h"
#include "report/StrategyReport.h"

#include <QThread>

// The desktop program's backtest worker: runs the engine off the interface
// thread and reports through queued signals.
class StockThreadTarget : public QThread {
    Q_OBJECT
public:
    using QThread::QThread;

    // Ignored while a run is active.
    void setFiles(const StockFileList &files);
    void setStrategy(const QString &scriptText, const StrategyConfig &config);
    void setJobs(int jobs) { m_jobs = jobs; }

    // Read only after updateFinished().
    TradeBook &tradeBook() { return m_book; }
    const RuleEffects &ruleEffects() const { return m_effects; }
    const StrategyReport &report() const { return m_report; }

signals:
    void updateStock(int percent, const QString &code);
    void updateFinished();

protected:
    void run() override;

private:
    StockFileList m_files;
    QString m_scriptText;
    StrategyConfig m_config;
    int m_jobs = BacktestEngine::defaultJobs();
    TradeBook m_book;
    RuleEffects m_effects;
    StrategyReport m_report;
};
