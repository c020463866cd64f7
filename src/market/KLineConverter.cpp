#include "KLineConverter.h"

#include "KLineWriter.h"
#include "SafeFile.h"
#include "StockLoader.h"

#include <QDir>
#include <QFileInfo>

KLineConverter::KLineConverter(KLineSource source, QString targetDir)
    : m_source(std::move(source)), m_targetDir(std::move(targetDir))
{
}

// Only a regular file of that name is replaced: never a link (stock files
// are ours to write, not what they point at), a folder or a device.
QString KLineConverter::writeStock(const QString &code, const QByteArray &text) const
{
    const QString path = m_targetDir + QLatin1Char('/') + code;
    const QString error = SafeFile::replace(path, text, SymlinkRule::Refuse);
    return error.isEmpty() ? QString() : path + QStringLiteral(": ") + error;
}

KLineConverter::Result KLineConverter::run(const Progress &progress, const std::atomic<bool> *cancel) const
{
    Result result;
    const StockFileList files = m_source.list();
    if (files.isEmpty())
        return result;
    if (!QDir().mkpath(m_targetDir)) {
        result.writeError = QStringLiteral("cannot create %1").arg(m_targetDir);
        return result;
    }
    StockLoader loader;
    StockSeries series;
    for (qsizetype i = 0; i < files.size(); ++i) {
        if (cancel && cancel->load()) {
            result.cancelled = true;
            break;
        }
        const QString code = m_source.codeOf(files[i]);
        loader.load(files[i], m_source, series);
        if (series.bars.empty()) {
            result.skipped.append(files[i]);
        } else {
            result.writeError = writeStock(code, KLineWriter::text(series.view()));
            if (!result.writeError.isEmpty())
                break;
            ++result.converted;
        }
        if (progress)
            progress(int(i + 1), int(files.size()), code);
    }
    return result;
}
