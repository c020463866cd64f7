#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

// Tables as spreadsheets open them: UTF-8 with a byte-order mark (without
// it they take the bytes for the system's code page and garble the Chinese),
// a header row, fields quoted where a separator, quote or line break would
// split them, and "\r\n" line ends.
namespace SpreadsheetCsv {

QByteArray bytes(const QStringList &header, const std::vector<QStringList> &rows);

// Writes the table through a temporary beside `path`; an error text, or empty.
QString write(const QString &path, const QStringList &header, const std::vector<QStringList> &rows);

} // namespace SpreadsheetCsv
