#include "TextFile.h"

#include <QDebug>
#include <QFile>
#include <QStringDecoder>
#include <QStringEncoder>

namespace TextFile {
namespace {

// Larger files are not K-line data, scripts or configurations; refusing them
// keeps a stray file in the data directory from exhausting memory.
constexpr qint64 kLargestReadableFile = qint64(1) << 28;

void logOpenFailure(const QString &reason) { qDebug().noquote() << "open file failed:" << reason; }

} // namespace

bool readBytes(const QString &path, std::vector<char> &bytes)
{
    bytes.clear();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        logOpenFailure(file.errorString());
        return false;
    }
    const qint64 size = file.size();
    if (size > kLargestReadableFile) {
        logOpenFailure(QStringLiteral("File too large"));
        return false;
    }
    // size() is 0 for special files; read in chunks until the end in any case.
    qint64 filled = 0;
    bytes.resize(size_t(size > 0 ? size : 4096));
    for (;;) {
        if (filled == qint64(bytes.size())) {
            if (filled >= kLargestReadableFile) {
                logOpenFailure(QStringLiteral("File too large"));
                return false;
            }
            bytes.resize(bytes.size() * 2);
        }
        const qint64 got = file.read(bytes.data() + filled, qint64(bytes.size()) - filled);
        if (got < 0) {
            logOpenFailure(file.errorString());
            bytes.clear();
            return false;
        }
        if (got == 0)
            break;
        filled += got;
    }
    bytes.resize(size_t(filled));
    return true;
}

QString decode(const QByteArray &bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8);
    QString text = utf8(bytes);
    if (!utf8.hasError()) {
        if (text.startsWith(QChar(0xFEFF)))
            text.remove(0, 1);
        return text;
    }
    QStringDecoder gb18030("GB18030");
    return gb18030(bytes);
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

QString readTextFile(const QString &path)
{
    std::vector<char> bytes;
    if (!TextFile::readBytes(path, bytes))
        return {};
    return TextFile::decode(QByteArray::fromRawData(bytes.data(), qsizetype(bytes.size())));
}
