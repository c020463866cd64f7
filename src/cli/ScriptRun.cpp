#include "ScriptRun.h"

#include "CliOutput.h"
#include "Commands.h"
#include "ScriptInput.h"

int openScriptRun(const QString &scriptPath, const QString &configPath, const QString &dataDir,
                  std::unique_ptr<BacktestRun> &run)
{
    const std::optional<ScriptInput> input = ScriptInput::read(scriptPath, configPath);
    if (!input)
        return Commands::UsageError;
    run = std::make_unique<BacktestRun>(input->configText, input->scriptText, dataDir);
    if (run->problem() == BacktestRun::Problem::None)
        return Commands::Ok;
    CliOutput::err(run->problemTitle() + QStringLiteral(": ") + run->problemText() + QLatin1Char('\n'));
    return run->problem() == BacktestRun::Problem::NoData ? Commands::NoData : Commands::CompileError;
}
