#include "SpreadsheetCsv.h"

#include "SafeFile.h"

namespace SpreadsheetCsv {
namespace {

void appendRow(QString &text, const QStringList &fields)
{
    for (qsizetype i = 0; i < fields.size(); ++i) {
        if (i > 0)
            text += QLatin1Char(',');
        QString field = fields[i];
        if (field.contains(QLatin1Char(',')) || field.contains(QLatin1Char('"')) ||
            field.contains(QLatin1Char('\n')) || field.contains(QLatin1Char('\r')))
            field =
                QLatin1Char('"') + field.replace(QLatin1Char('"'), QLatin1String("\"\"")) + QLatin1Char('"');
        text += field;
    }
    text += QLatin1String("\r\n");
}

} // namespace

QByteArray bytes(const QStringList &header, const std::vector<QStringList> &rows)
{
    QString text;
    appendRow(text, header);
    for (const QStringList &row : rows)
        appendRow(text, row);
    return QByteArray("\xEF\xBB\xBF") + text.toUtf8();
}

QString write(const QString &path, const QStringList &header, const std::vector<QStringList> &rows)
{
    return SafeFile::replace(path, bytes(header, rows), SymlinkRule::FollowToRegularFile);
}

} // namespace SpreadsheetCsv
