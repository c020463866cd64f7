#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

// Splits delimited text into rows of fields the way spreadsheets write it:
// a field in double quotes may hold the separator, line breaks and doubled
// quotes (""); a quote inside an unquoted field is an ordinary character.
// Lines may end in LF, CR LF or CR; blank lines give no row.
class CsvReader {
public:
    CsvReader(QStringView text, QChar separator);

    // The next row, or false at the end of the text.
    bool readRow(QStringList &fields);

    // The separator the first line uses most outside quotes: ",", ";" or tab.
    static QChar guessSeparator(QStringView text);

private:
    QString readQuoted();
    bool atLineEnd() const;
    void skipLineEnd();

    QStringView m_text;
    QChar m_separator;
    qsizetype m_pos = 0;
};
