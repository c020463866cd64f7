#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <functional>

// What a symbolic link at the path we replace may do.
enum class SymlinkRule {
    // The user's own link to a regular file (an output file, "config.conf", an
    // exported script): the file it names is replaced and the link stays.
    FollowToRegularFile,
    // Files we write into a shared folder (downloads): a link planted there
    // must not carry our write anywhere else.
    Refuse,
};

// Replacing files without ever writing where we should not: the target must be
// a regular file or absent, never a device, FIFO, directory or socket (a
// rename over those would destroy the node or fail half-way).
namespace SafeFile {

// Why `path` may not be replaced, in the user's words, or an empty text when it may.
QString refusal(const QString &path, SymlinkRule links);

// Writes `bytes` to a temporary file beside the target and renames it over the
// target, so a failure never leaves a half-written file. An error text, or empty.
QString replace(const QString &path, const QByteArray &bytes, SymlinkRule links);

// The same, written piece by piece as `nextPiece` gives them until it gives an
// empty one, so a large file is never held whole in memory. Each piece need
// only stay valid until the next is asked for.
QString replace(const QString &path, const std::function<QByteArrayView()> &nextPiece, SymlinkRule links);

} // namespace SafeFile
