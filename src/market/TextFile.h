#pragma once

#include "ByteBuffer.h"
#include "StockSkip.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <string_view>
#include <vector>

enum class TextEncoding { Gbk, Utf8 };

// Whole-file reading and writing. Our own text files (scripts, "config.conf",
// "output.csv") are GBK as the shipped program wrote them; files users bring
// may be UTF-8, which is recognised and taken as such.
namespace TextFile {

// Reads the whole file into `bytes` (reusing its capacity). On failure logs
// "open file failed:" with the system's reason and returns false.
bool readBytes(const QString &path, ByteBuffer &bytes);

// The same for a stock file, which must be a regular file within the size
// cap: a FIFO, device or link found in its place is refused (with the log
// line) before anything could wait on it or read from it.
StockSkip readStockFile(const QString &path, ByteBuffer &bytes);

// Valid UTF-8 as UTF-8, anything else as GB18030 with invalid bytes replaced
// by U+FFFD; one leading BOM is dropped.
QString decode(const QByteArray &bytes);

QByteArray encode(const QString &text, TextEncoding encoding);

// The file's text; nothing (after the log line) when it cannot be read, which
// an empty file is not.
std::optional<QString> readText(const QString &path);

// A date of a data file as text: ASCII as it stands, anything else decoded.
QString decodeDate(std::string_view date);

} // namespace TextFile

// The file's text, or an empty text (after the log line) when it cannot be read.
QString readTextFile(const QString &path);
