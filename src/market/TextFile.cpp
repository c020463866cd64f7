#include "TextFile.h"

#include <QDebug>
#include <QFile>
#include <QStringDecoder>
#include <QStringEncoder>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

namespace TextFile {
namespace {

// Larger files are not K-line data, scripts or configurations; refusing them
// keeps a stray file in the data directory from exhausting memory.
constexpr qint64 kLargestReadableFile = qint64(1) << 28;

void logOpenFailure(const QString &reason) { qDebug().noquote() << "open file failed:" << reason; }

StockSkip refuse(StockSkip skip, const QString &reason)
{
    logOpenFailure(reason);
    return skip;
}

// Reads the whole of an open file into `bytes`, up to the size cap. A regular
// file arrives in one piece at its size; special files report no size, and a
// file may grow while it is read, so whatever follows comes in chunks.
StockSkip readToEnd(QFile &file, ByteBuffer &bytes)
{
    const qint64 size = file.size();
    if (size > kLargestReadableFile)
        return refuse(StockSkip::TooLarge, QStringLiteral("File too large"));
    // Grown ahead of need: a worker reads file after file into one buffer,
    // and every fresh allocation has its pages mapped anew.
    if (bytes.capacity() < size_t(size))
        bytes.reserve(std::max(size_t(size), 2 * bytes.capacity()));
    bytes.resize(size_t(size));
    qint64 filled = 0;
    char chunk[16384];
    for (;;) {
        const bool sized = filled < size;
        const qint64 got =
            sized ? file.read(bytes.data() + filled, size - filled) : file.read(chunk, sizeof chunk);
        if (got < 0) {
            bytes.clear();
            return refuse(StockSkip::Unreadable, file.errorString());
        }
        if (got == 0)
            break;
        if (filled + got > kLargestReadableFile) {
            bytes.clear();
            return refuse(StockSkip::TooLarge, QStringLiteral("File too large"));
        }
        if (!sized)
            bytes.insert(bytes.end(), chunk, chunk + got);
        filled += got;
    }
    bytes.resize(size_t(filled));
    return StockSkip::None;
}

} // namespace

bool readBytes(const QString &path, ByteBuffer &bytes)
{
    bytes.clear();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        logOpenFailure(file.errorString());
        return false;
    }
    return readToEnd(file, bytes) == StockSkip::None;
}

StockSkip readStockFile(const QString &path, ByteBuffer &bytes)
{
    bytes.clear();
    const QByteArray name = QFile::encodeName(path);
    struct stat entry;
    if (::lstat(name.constData(), &entry) != 0)
        return refuse(StockSkip::Unreadable, qt_error_string(errno));
    if (!S_ISREG(entry.st_mode))
        return refuse(StockSkip::NotRegularFile, QStringLiteral("Not a regular file"));
    // Opened without following a link and without waiting, in case the entry
    // was swapped since it was looked at; what was opened is checked again.
    const int fd = ::open(name.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) {
        return refuse(errno == ELOOP ? StockSkip::NotRegularFile : StockSkip::Unreadable,
                      qt_error_string(errno));
    }
    QFile file;
    file.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
    if (::fstat(fd, &entry) != 0 || !S_ISREG(entry.st_mode))
        return refuse(StockSkip::NotRegularFile, QStringLiteral("Not a regular file"));
    return readToEnd(file, bytes);
}

QString decode(const QByteArray &bytes)
{
    // Stateless, and a BOM kept so that exactly one is dropped below whatever
    // the encoding; a second one is part of the text.
    constexpr auto flags = QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom;
    QStringDecoder utf8(QStringDecoder::Utf8, flags);
    QString text = utf8(bytes);
    if (utf8.hasError()) {
        // A lead byte cut off at the very end would be held back for bytes that
        // never come; a line feed behind it (never a trail byte) makes it
        // replaced like any other invalid byte.
        // Opening the converter costs far more than the few bytes of a date or
        // a number it mostly reads, so each thread keeps one; being stateless,
        // it starts afresh on every call.
        thread_local QStringDecoder gb18030("GB18030", flags);
        text = gb18030(bytes + '\n');
        text.chop(1);
    }
    if (text.startsWith(QChar(0xFEFF)))
        text.remove(0, 1);
    return text;
}

QString decodeDate(std::string_view date)
{
    for (const char c : date) {
        if (static_cast<unsigned char>(c) >= 0x80)
            return decode(QByteArray(date.data(), qsizetype(date.size())));
    }
    return QString::fromLatin1(date.data(), qsizetype(date.size()));
}

QByteArray encode(const QString &text, TextEncoding encoding)
{
    if (encoding == TextEncoding::Utf8)
        return text.toUtf8();
    QStringEncoder gb18030("GB18030");
    return gb18030(text);
}

} // namespace TextFile

std::optional<QString> TextFile::readText(const QString &path)
{
    ByteBuffer bytes;
    if (!readBytes(path, bytes))
        return std::nullopt;
    return decode(QByteArray::fromRawData(bytes.data(), qsizetype(bytes.size())));
}

QString readTextFile(const QString &path) { return TextFile::readText(path).value_or(QString()); }
