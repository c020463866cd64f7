#include "ScriptInput.h"

#include "CliOutput.h"
#include "market/TextFile.h"
#include "script/StrategyConfig.h"

#include <QFileInfo>

std::optional<ScriptInput> ScriptInput::read(const QString &scriptPath, const QString &configPath)
{
    // A folder or a FIFO would read as an empty configuration, or never end.
    const QFileInfo configFile(configPath);
    if (!configPath.isEmpty() && (!configFile.isFile() || !configFile.isReadable())) {
        CliOutput::err(QStringLiteral("无法读取配置文件 / cannot read configuration: %1\n").arg(configPath));
        return std::nullopt;
    }
    // An empty script is read and then fails to compile on its one empty line.
    const std::optional<QString> text = TextFile::readText(scriptPath);
    if (!text) {
        CliOutput::err(QStringLiteral("无法读取脚本 / cannot read script: %1\n").arg(scriptPath));
        return std::nullopt;
    }
    return ScriptInput{
        StrategyConfig::configFileText(configPath.isEmpty() ? QStringLiteral("config.conf") : configPath),
        *text};
}
