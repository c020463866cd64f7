#pragma once

#include <QStringList>

// The download command comes from a plugin beside orvel-cli, loaded only for
// it: every other command would otherwise load the network library at start-up.
namespace DownloadPlugin {

// Runs the command with its arguments (the program name first); the exit code.
int download(const QStringList &arguments);

} // namespace DownloadPlugin
