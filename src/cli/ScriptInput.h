#pragma once

#include <QString>

#include <optional>

// What a run starts from: the configuration text ("config.conf", or the file
// --config names) and the script's text.
struct ScriptInput {
    QString configText;
    QString scriptText;

    // Both texts, or nothing after saying which file could not be read.
    static std::optional<ScriptInput> read(const QString &scriptPath, const QString &configPath);
};
