#include "OutputCsv.h"

#include "TradeDate.h"
#include "market/Prefault.h"
#include "market/SafeFile.h"

#include <array>
#include <charconv>
#include <cmath>
#include <future>
#include <utility>

namespace {

// Six significant digits in the shorter of fixed or scientific form, as
// printf's "%g" prints them, without a locale or a format string to read.
char *appendGeneral(char *out, double value)
{
    return std::to_chars(out, out + 32, value, std::chars_format::general, 6).ptr;
}

// Most prices are floats read from cents: from 1 to 10,000, a value within a
// millionth of a whole number of cents rounds to those cents at six digits,
// and prints as them without trailing zeros. False for any other value.
bool appendCents(char *&out, double value)
{
    const double magnitude = std::fabs(value);
    if (!(magnitude >= 1 && magnitude < 10000))
        return false;
    const double cents = std::floor(magnitude * 100 + 0.5);
    if (std::fabs(magnitude * 100 - cents) >= 1e-4)
        return false;
    const long whole = long(cents);
    if (value < 0)
        *out++ = '-';
    out = std::to_chars(out, out + 8, whole / 100).ptr;
    const long fraction = whole % 100;
    if (fraction != 0) {
        *out++ = '.';
        *out++ = char('0' + fraction / 10);
        if (fraction % 10 != 0)
            *out++ = char('0' + fraction % 10);
    }
    return true;
}

// The same for prices, which print in fixed form, without the library's
// exact decimal expansion: scaled by a power of ten (exact in a double) the
// value is off by far less than a millionth of a unit, so rounding to six
// digits goes the same way unless it sits on a half; those go the long way.
char *appendShortReal(char *out, double value)
{
    static constexpr double kPowers[] = {1e-4, 1e-3, 1e-2, 1e-1, 1,   1e1, 1e2,
                                         1e3,  1e4,  1e5,  1e6,  1e7, 1e8, 1e9};
    if (appendCents(out, value))
        return out;
    const double magnitude = std::fabs(value);
    if (!(magnitude >= 1e-4 && magnitude < 999999.5))
        return appendGeneral(out, value);
    int exponent = 5; // of the first digit
    while (magnitude < kPowers[exponent + 4])
        --exponent;
    const double scaled = magnitude * kPowers[5 - exponent + 4];
    const double whole = std::floor(scaled);
    const double fraction = scaled - whole;
    if (std::fabs(fraction - 0.5) < 1e-6)
        return appendGeneral(out, value);
    long digits = long(whole) + (fraction > 0.5);
    if (digits == 1000000) { // 9.999996 rounds up to 10.0000
        digits = 100000;
        if (++exponent > 5)
            return appendGeneral(out, value);
    }
    char text[6];
    for (int i = 5; i >= 0; --i, digits /= 10)
        text[i] = char('0' + digits % 10);
    int significant = 6;
    while (significant > 1 && text[significant - 1] == '0')
        --significant;
    if (value < 0)
        *out++ = '-';
    if (exponent >= 0) {
        out = std::copy(text, text + exponent + 1, out);
        if (significant > exponent + 1) {
            *out++ = '.';
            out = std::copy(text + exponent + 1, text + significant, out);
        }
        return out;
    }
    *out++ = '0';
    *out++ = '.';
    out = std::fill_n(out, -exponent - 1, '0');
    return std::copy(text, text + significant, out);
}

// Writes rows straight as bytes into a buffer it keeps: dates of the usual
// form are written from their numbers, other ASCII texts (codes nearly
// always) are copied as they are in both encodings, anything else goes
// through the encoder, and the status texts are encoded once.
class CsvWriter {
public:
    explicit CsvWriter(TextEncoding encoding) : m_encoding(encoding)
    {
        for (int i = 0; i < int(m_statuses.size()); ++i)
            m_statuses[size_t(i)] = TextFile::encode(statusText(TradeStatus(i)), encoding);
    }

    void appendRow(const TradeRecord &r, const QString &code)
    {
        // Room for a row of two dates, three numbers and a status; texts make their own.
        char *out = grow(m_bytes.data() + m_size, kRowRoom);
        out = appendText(out, code);
        *out++ = ',';
        out = appendDate(out, r.buyDate);
        *out++ = ',';
        out = appendShortReal(out, r.buyPrice);
        *out++ = ',';
        out = appendDate(out, r.saleDate);
        *out++ = ',';
        out = appendShortReal(out, r.salePrice);
        *out++ = ',';
        out = std::to_chars(out, out + 16, r.holdDays).ptr;
        *out++ = ',';
        const QByteArray &status = m_statuses[size_t(r.status)];
        out = std::copy(status.begin(), status.end(), out);
        *out++ = '\n';
        m_size = out - m_bytes.data();
    }

    void clear() { m_size = 0; }
    // Room for `bytes` before the buffer has to grow, mapped at once.
    void reserve(qsizetype bytes)
    {
        if (m_bytes.size() >= bytes)
            return;
        m_bytes.resize(bytes);
        prefaultPages(m_bytes.data(), size_t(bytes));
    }
    qsizetype size() const { return m_size; }
    QByteArrayView bytes() const { return QByteArrayView(m_bytes.data(), m_size); }

private:
    static constexpr qsizetype kRowRoom = 128;

    // Makes room for `count` bytes at `out`, which may move with the buffer.
    char *grow(char *out, qsizetype count)
    {
        m_size = out - m_bytes.data();
        if (m_bytes.size() - m_size < count)
            m_bytes.resize(std::max(m_bytes.size() * 2, m_size + count + 4096));
        return m_bytes.data() + m_size;
    }

    char *appendDate(char *out, int date)
    {
        if (date >= 0 && date < TradeDate::kSlots)
            return TradeDate::writeSlot(out, date);
        return appendText(out, TradeDate::text(date));
    }

    char *appendText(char *out, const QString &text)
    {
        out = grow(out, text.size() + kRowRoom);
        const QChar *chars = text.constData();
        for (qsizetype i = 0; i < text.size(); ++i) {
            const char16_t c = chars[i].unicode();
            if (c >= 0x80)
                return appendEncoded(out, text);
            out[i] = char(c);
        }
        return out + text.size();
    }

    char *appendEncoded(char *out, const QString &text)
    {
        const QByteArray encoded = TextFile::encode(text, m_encoding);
        out = grow(out, encoded.size() + kRowRoom); // the rest of the row still fits behind it
        return std::copy(encoded.begin(), encoded.end(), out);
    }

    TextEncoding m_encoding;
    std::array<QByteArray, 6> m_statuses;
    QByteArray m_bytes;
    qsizetype m_size = 0;
};

// The book orders records stored in file order: asked for ahead, the
// scattered records are in the cache by the time their row is written.
void appendRows(CsvWriter &writer, const TradeBook &book, qsizetype first, qsizetype last)
{
    constexpr qsizetype kAhead = 8;
    for (qsizetype row = first; row < last; ++row) {
        if (row + kAhead < last) {
            const char *ahead = reinterpret_cast<const char *>(&book[row + kAhead]);
            __builtin_prefetch(ahead);
            __builtin_prefetch(ahead + sizeof(TradeRecord) - 1);
        }
        writer.appendRow(book[row], book.code(book[row]));
    }
}

} // namespace

QString shortReal(double value)
{
    char buffer[32];
    return QString::fromLatin1(buffer, appendShortReal(buffer, value) - buffer);
}

QByteArray outputCsvBytes(const TradeBook &book, TextEncoding encoding)
{
    CsvWriter writer(encoding);
    appendRows(writer, book, 0, book.size());
    return writer.bytes().toByteArray();
}

QString outputCsvText(const TradeBook &book)
{
    return QString::fromUtf8(outputCsvBytes(book, TextEncoding::Utf8));
}

QString writeOutputCsv(const QString &path, const TradeBook &book, TextEncoding encoding)
{
    // About a megabyte a piece: a whole market's trades are never held twice,
    // once as records and once as text. Two pieces are formatted at once, the
    // second on a thread of its own, and written in turn.
    constexpr qsizetype kRows = 16384;
    std::array<CsvWriter, 2> writers{CsvWriter(encoding), CsvWriter(encoding)};
    constexpr qsizetype kRowBytes = 64; // a little more than a usual row
    for (CsvWriter &writer : writers)
        writer.reserve(std::min(book.size(), kRows) * kRowBytes);
    const auto format = [&book](CsvWriter &writer, qsizetype first) {
        writer.clear();
        appendRows(writer, book, std::min(first, book.size()), std::min(first + kRows, book.size()));
    };
    qsizetype next = 0; // the first row of the next pair of pieces
    int handed = 0; // pieces of the current pair handed out
    const auto nextPiece = [&]() -> QByteArrayView {
        if (handed == 1) {
            handed = 2;
            return writers[1].bytes();
        }
        std::future<void> second = std::async(std::launch::async, format, std::ref(writers[1]), next + kRows);
        format(writers[0], next);
        second.get();
        next += 2 * kRows;
        handed = 1;
        return writers[0].bytes();
    };
    return SafeFile::replace(path, nextPiece, SymlinkRule::FollowToRegularFile);
}
