#include "OutputCsv.h"

#include "TradeDate.h"
#include "market/SafeFile.h"

#include <array>
#include <charconv>
#include <utility>

namespace {

// Six significant digits in the shorter of fixed or scientific form, as
// printf's "%g" prints them, without a locale or a format string to read.
char *appendShortReal(char *out, double value)
{
    return std::to_chars(out, out + 32, value, std::chars_format::general, 6).ptr;
}

// Writes rows straight as bytes: dates of the usual form are written from
// their numbers, other ASCII texts (codes nearly always) are copied as they
// are in both encodings, anything else goes through the
// encoder, and the status texts are encoded once.
class CsvWriter {
public:
    explicit CsvWriter(TextEncoding encoding) : m_encoding(encoding)
    {
        for (int i = 0; i < int(m_statuses.size()); ++i)
            m_statuses[size_t(i)] = TextFile::encode(statusText(TradeStatus(i)), encoding);
    }

    void reserve(qsizetype rows) { m_bytes.reserve(rows * 64); }

    void appendRow(const TradeRecord &r)
    {
        appendText(r.code);
        m_bytes.append(',');
        appendDate(r.buyDate);
        char numbers[96];
        char *end = numbers;
        *end++ = ',';
        end = appendShortReal(end, r.buyPrice);
        *end++ = ',';
        m_bytes.append(numbers, end - numbers);
        appendDate(r.saleDate);
        end = numbers;
        *end++ = ',';
        end = appendShortReal(end, r.salePrice);
        *end++ = ',';
        end = std::to_chars(end, end + 16, r.holdDays).ptr;
        *end++ = ',';
        m_bytes.append(numbers, end - numbers);
        m_bytes.append(m_statuses[size_t(r.status)]);
        m_bytes.append('\n');
    }

    qsizetype size() const { return m_bytes.size(); }
    QByteArray take() { return std::exchange(m_bytes, QByteArray()); }

private:
    void appendDate(int date)
    {
        if (date >= 0 && date < TradeDate::kSlots) {
            char text[10];
            m_bytes.append(text, TradeDate::writeSlot(text, date) - text);
        } else {
            appendText(TradeDate::text(date));
        }
    }

    void appendText(const QString &text)
    {
        const QChar *chars = text.constData();
        const qsizetype size = text.size();
        const qsizetype start = m_bytes.size();
        m_bytes.resize(start + size);
        char *out = m_bytes.data() + start;
        for (qsizetype i = 0; i < size; ++i) {
            const char16_t c = chars[i].unicode();
            if (c >= 0x80) {
                m_bytes.resize(start);
                m_bytes.append(TextFile::encode(text, m_encoding));
                return;
            }
            out[i] = char(c);
        }
    }

    TextEncoding m_encoding;
    std::array<QByteArray, 6> m_statuses;
    QByteArray m_bytes;
};

} // namespace

QString shortReal(double value)
{
    char buffer[32];
    return QString::fromLatin1(buffer, appendShortReal(buffer, value) - buffer);
}

QByteArray outputCsvBytes(const TradeBook &book, TextEncoding encoding)
{
    CsvWriter writer(encoding);
    writer.reserve(book.size());
    for (const auto &[date, records] : book.entries()) {
        for (const TradeRecord &r : records)
            writer.appendRow(r);
    }
    return writer.take();
}

QString outputCsvText(const TradeBook &book)
{
    return QString::fromUtf8(outputCsvBytes(book, TextEncoding::Utf8));
}

QString writeOutputCsv(const QString &path, const TradeBook &book, TextEncoding encoding)
{
    // A megabyte at a time: a whole market's trades are never held twice, once as records and once as text.
    constexpr qsizetype kPiece = 1 << 20;
    CsvWriter writer(encoding);
    auto day = book.entries().begin();
    qsizetype next = 0; // the next row of `day`
    const auto nextPiece = [&]() {
        writer.reserve(kPiece / 64 + 4); // a row beyond the megabyte fits too
        while (writer.size() < kPiece) {
            while (day != book.entries().end() && next == day->second.size()) {
                ++day;
                next = 0;
            }
            if (day == book.entries().end())
                break;
            writer.appendRow(day->second[next++]);
        }
        return writer.take();
    };
    return SafeFile::replace(path, nextPiece, SymlinkRule::FollowToRegularFile);
}
