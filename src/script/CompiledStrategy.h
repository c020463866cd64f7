#pragma once

#include "DmiPeriods.h"
#include "Script.h"
#include "StrategyConfig.h"

#include <memory>

class CompiledStrategy;

// What compiling a script gives: a strategy, or where it failed.
struct CompileResult {
    enum class Status { Ok, ErrorAtLine, NoBuyStatement };
    Status status = Status::Ok;
    int line = 0;                                     // the 1-based failing line, for ErrorAtLine
    QString reason;                                   // why that line failed, for ErrorAtLine
    std::shared_ptr<const CompiledStrategy> strategy; // for Ok only
};

// A script compiled once, never changed afterwards: its statements and the
// configuration after its `config.` lines. Workers share it and each binds
// its own copy of the statements (Script's copy).
class CompiledStrategy {
public:
    // `config` is where the script's `config.` lines start from; a non-empty
    // `dataDir` then replaces the configured K-line directory.
    static CompileResult compile(StrategyConfig config, const QString &text, const QString &dataDir = {});

    const Script &script() const { return m_script; }
    const StrategyConfig &config() const { return m_config; }
    // The periods of the script's first DMI term, for charts of its stocks.
    const DmiPeriods &dmiPeriods() const { return m_dmiPeriods; }

private:
    CompiledStrategy() = default;

    Script m_script;
    StrategyConfig m_config;
    DmiPeriods m_dmiPeriods;
};
