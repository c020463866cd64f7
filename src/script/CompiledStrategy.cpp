#include "CompiledStrategy.h"

#include "ScriptErrorReason.h"

CompileResult CompiledStrategy::compile(StrategyConfig config, const QString &text, const QString &dataDir)
{
    std::shared_ptr<CompiledStrategy> strategy(new CompiledStrategy);
    CompileResult result;
    if (compileScript(strategy->m_script, config, text, result.line) != 1) {
        result.status =
            result.line > 0 ? CompileResult::Status::ErrorAtLine : CompileResult::Status::NoBuyStatement;
        if (result.line > 0)
            result.reason = scriptErrorReason(splitScriptLines(text).at(result.line - 1));
        return result;
    }
    if (!dataDir.isEmpty())
        config.kDir = dataDir;
    strategy->m_config = std::move(config);
    strategy->m_dmiPeriods = DmiPeriods::ofScript(text);
    result.strategy = std::move(strategy);
    return result;
}
