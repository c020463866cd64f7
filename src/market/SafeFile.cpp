#include "SafeFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <sys/stat.h>

#include <utility>

namespace SafeFile {
namespace {

// The refusal for anything that is not a regular file, or empty.
QString kindRefusal(mode_t mode)
{
    if (S_ISREG(mode))
        return {};
    if (S_ISDIR(mode))
        return QStringLiteral("是文件夹, 不是普通文件 / is a directory, not a regular file");
    if (S_ISFIFO(mode))
        return QStringLiteral("是管道, 不是普通文件 / is a FIFO, not a regular file");
    if (S_ISCHR(mode) || S_ISBLK(mode))
        return QStringLiteral("是设备, 不是普通文件 / is a device, not a regular file");
    if (S_ISSOCK(mode))
        return QStringLiteral("是套接字, 不是普通文件 / is a socket, not a regular file");
    return QStringLiteral("不是普通文件 / is not a regular file");
}

// The file to hand to the writer: the path itself, or for a followed link the
// file it finally names, so what was checked is what gets replaced.
QString writtenPath(const QString &path, SymlinkRule links, QString &refusalText)
{
    struct stat entry;
    const QByteArray name = QFile::encodeName(path);
    if (::lstat(name.constData(), &entry) != 0)
        return path; // absent: created anew
    if (!S_ISLNK(entry.st_mode)) {
        refusalText = kindRefusal(entry.st_mode);
        return path;
    }
    if (links == SymlinkRule::Refuse) {
        refusalText = QStringLiteral("是符号链接, 不会写到别处 / is a symbolic link, not written through");
        return path;
    }
    if (::stat(name.constData(), &entry) != 0) {
        refusalText = QStringLiteral("链接指向的文件不存在 / is a link to nothing");
        return path;
    }
    refusalText = kindRefusal(entry.st_mode);
    return QFileInfo(path).canonicalFilePath();
}

} // namespace

QString refusal(const QString &path, SymlinkRule links)
{
    QString refusalText;
    writtenPath(path, links, refusalText);
    return refusalText;
}

QString replace(const QString &path, const QByteArray &bytes, SymlinkRule links)
{
    bool given = false;
    return replace(
        path,
        [&]() -> QByteArrayView { return std::exchange(given, true) ? QByteArrayView() : QByteArrayView(bytes); },
        links);
}

QString replace(const QString &path, const std::function<QByteArrayView()> &nextPiece, SymlinkRule links)
{
    QString refusalText;
    const QString target = writtenPath(path, links, refusalText);
    if (!refusalText.isEmpty())
        return refusalText;
    QSaveFile file(target);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    for (QByteArrayView piece = nextPiece(); !piece.isEmpty(); piece = nextPiece()) {
        if (file.write(piece.data(), piece.size()) != piece.size()) {
            const QString reason = file.errorString();
            file.cancelWriting();
            return reason;
        }
    }
    if (!file.commit())
        return file.errorString();
    return {};
}

} // namespace SafeFile
