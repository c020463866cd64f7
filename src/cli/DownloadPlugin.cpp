#include "DownloadPlugin.h"

#include "BesideProgram.h"
#include "CliOutput.h"
#include "Commands.h"

#include <QLibrary>

namespace DownloadPlugin {

int download(const QStringList &arguments)
{
    QLibrary plugin(besideProgram(QStringLiteral("liborvel_download_plugin")));
    using Download = int (*)(const QStringList *arguments);
    const auto run = reinterpret_cast<Download>(plugin.resolve("orvelDownload"));
    if (!run) {
        CliOutput::err(QStringLiteral("无法加载下载模块 / cannot load the download module: %1\n")
                           .arg(plugin.errorString()));
        return Commands::DownloadFailed;
    }
    return run(&arguments);
}

} // namespace DownloadPlugin
