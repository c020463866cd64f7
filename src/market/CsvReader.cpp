#include "CsvReader.h"

CsvReader::CsvReader(QStringView text, QChar separator) : m_text(text), m_separator(separator) {}

bool CsvReader::atLineEnd() const
{
    return m_pos >= m_text.size() || m_text[m_pos] == QLatin1Char('\n') || m_text[m_pos] == QLatin1Char('\r');
}

void CsvReader::skipLineEnd()
{
    if (m_pos < m_text.size() && m_text[m_pos] == QLatin1Char('\r'))
        ++m_pos;
    if (m_pos < m_text.size() && m_text[m_pos] == QLatin1Char('\n'))
        ++m_pos;
}

// From an opening quote to its closing one; whatever follows the closing
// quote up to the next separator is kept too, as spreadsheets do.
QString CsvReader::readQuoted()
{
    QString field;
    ++m_pos;
    while (m_pos < m_text.size()) {
        const QChar c = m_text[m_pos++];
        if (c != QLatin1Char('"')) {
            field += c;
        } else if (m_pos < m_text.size() && m_text[m_pos] == QLatin1Char('"')) {
            field += c;
            ++m_pos;
        } else {
            break;
        }
    }
    while (!atLineEnd() && m_text[m_pos] != m_separator)
        field += m_text[m_pos++];
    return field;
}

bool CsvReader::readRow(QStringList &fields)
{
    fields.clear();
    while (m_pos < m_text.size() && atLineEnd())
        skipLineEnd(); // blank lines
    if (m_pos >= m_text.size())
        return false;
    for (;;) {
        if (m_text[m_pos] == QLatin1Char('"')) {
            fields.append(readQuoted());
        } else {
            const qsizetype start = m_pos;
            while (!atLineEnd() && m_text[m_pos] != m_separator)
                ++m_pos;
            fields.append(m_text.sliced(start, m_pos - start).toString());
        }
        if (atLineEnd()) {
            skipLineEnd();
            return true;
        }
        ++m_pos; // the separator
        if (atLineEnd()) {
            fields.append(QString());
            skipLineEnd();
            return true;
        }
    }
}

QChar CsvReader::guessSeparator(QStringView text)
{
    const QChar candidates[] = {QLatin1Char(','), QLatin1Char(';'), QLatin1Char('\t')};
    int counts[3] = {0, 0, 0};
    bool quoted = false;
    for (const QChar c : text) {
        if (c == QLatin1Char('"'))
            quoted = !quoted;
        else if (!quoted && (c == QLatin1Char('\n') || c == QLatin1Char('\r')))
            break;
        else if (!quoted)
            for (int i = 0; i < 3; ++i)
                counts[i] += c == candidates[i];
    }
    int best = 0;
    for (int i = 1; i < 3; ++i)
        if (counts[i] > counts[best])
            best = i;
    return candidates[best];
}
