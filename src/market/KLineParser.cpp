#include "KLineParser.h"

#include "DecimalNumber.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace {

// Where the list begins: at the "[" of the first "[[", or the whole text.
std::string_view afterListOpening(std::string_view text)
{
    const size_t open = text.find("[[");
    return open == std::string_view::npos ? text : text.substr(open + 1);
}

// The list is cut at the first "]]" after its opening.
std::string_view upToListClosing(std::string_view text)
{
    if (const void *close = memmem(text.data(), text.size(), "]]", 2))
        return text.substr(0, size_t(static_cast<const char *>(close) - text.data()));
    return text;
}

// How many days a part of the list can hold at most: one more than its "]"
// (every item but the last ends in one), and no more than items of the
// shortest usable form ",,,,," would give. A plain count of one byte runs
// many bytes a step, where looking for "],[" stopped at every item.
size_t itemCountAtMost(std::string_view text)
{
    // Counted in blocks a byte-sized count cannot overflow in, so that whole
    // vectors of bytes are compared and added at a time.
    size_t brackets = 0;
    for (size_t block = 0; block < text.size(); block += 255) {
        uint8_t inBlock = 0;
        for (const char c : text.substr(block, 255))
            inBlock += (c == ']');
        brackets += inBlock;
    }
    return std::min(brackets, text.size() / 8) + 1;
}

// Once the series fills its storage, reserves what the rest of the text can
// still hold, so a growing series never holds its old and its doubled storage
// at once. A series reused across files mostly has room already, and then
// the text is not counted at all.
void makeRoom(std::vector<Stock> &bars, std::string_view rest)
{
    if (bars.size() == bars.capacity())
        bars.reserve(bars.size() + itemCountAtMost(rest));
}

// Copies `text` without its double quotes; returns the length written. `out`
// may be where `text` is: nothing is written ahead of what was read.
size_t copyWithoutQuotes(std::string_view text, char *out)
{
    char *w = out;
    for (const char c : text) {
        *w = c;
        w += (c != '"');
    }
    return size_t(w - out);
}

// Walks the quote-free list: items separated by "],[", fields by ",".
class ItemScanner {
public:
    ItemScanner(const char *begin, const char *end) : m_begin(begin), m_end(end) {}

    bool atEnd() const { return m_atEnd; }
    std::string_view rest() const { return {m_cursor, size_t(m_end - m_cursor)}; }

    // The field starting at the cursor; moves the cursor behind it and tells
    // whether it was the last field of its item.
    std::string_view nextField(bool &lastOfItem)
    {
        const char *start = m_cursor;
        const char *comma = static_cast<const char *>(std::memchr(start, ',', size_t(m_end - start)));
        return finishField(start, comma ? comma : m_end, lastOfItem);
    }

    // Same, for a number: the fast path reads it in place; anything unusual
    // falls back to the general conversion of the whole field.
    float nextNumber(bool &lastOfItem)
    {
        float value = 0;
        const char *stop = DecimalNumber::scanSimpleFloat(m_cursor, m_end, value);
        if (stop && (stop == m_end || *stop == ',' || isItemSeparator(stop + 1))) {
            const char *start = m_cursor;
            finishField(start, stop != m_end && *stop == ']' ? stop + 1 : stop, lastOfItem);
            return value;
        }
        return DecimalNumber::toFloat(nextField(lastOfItem));
    }

    // Skips what is left of the current item.
    void skipItem()
    {
        bool last = false;
        while (!last && !m_atEnd)
            nextField(last);
    }

private:
    // True when `comma` is the "," of a "],[" that begins inside the text.
    bool isItemSeparator(const char *comma) const
    {
        return comma < m_end && *comma == ',' && comma > m_begin && comma[-1] == ']' && comma + 1 < m_end &&
               comma[1] == '[';
    }

    std::string_view finishField(const char *start, const char *stop, bool &lastOfItem)
    {
        if (stop == m_end) {
            m_atEnd = true;
            lastOfItem = true;
            m_cursor = m_end;
            return {start, size_t(stop - start)};
        }
        if (isItemSeparator(stop)) {
            lastOfItem = true;
            m_cursor = stop + 2;
            return {start, size_t(stop - 1 - start)};
        }
        lastOfItem = false;
        m_cursor = stop + 1;
        return {start, size_t(stop - start)};
    }

    const char *m_begin;
    const char *m_end;
    const char *m_cursor = m_begin;
    bool m_atEnd = false;
};

// The shape every quote-service file has: ["date","n","n","n","n","n"],[...
// read straight from the raw text, dates left where they stand. It takes an
// item only when reading it without its quotes would give the same fields, and
// otherwise stops, leaving the rest to the general path. Items it takes hold
// no "]]", so it also finds the list's end on the way.
class QuotedItemReader {
public:
    QuotedItemReader(const char *begin, const char *end) : m_cursor(begin), m_end(end) {}

    const char *cursor() const { return m_cursor; }
    std::string_view rest() const { return {m_cursor, size_t(m_end - m_cursor)}; }
    bool finished() const { return m_finished; }

    // Reads one item into `bar` (date and the five numbers) and moves past it.
    // Far from the end no byte needs comparing with it; a date longer than
    // that reading allows is left to the careful one.
    bool read(Stock &bar, float values[5])
    {
        if (m_end - m_cursor >= kUncheckedReach && readItem<false>(bar, values))
            return true;
        return readItem<true>(bar, values);
    }

private:
    static constexpr ptrdiff_t kUncheckedDateLength = 32;
    // "[", the quoted date and its comma, five quoted numbers with their
    // commas, and the "],[" behind.
    static constexpr ptrdiff_t kUncheckedReach =
        2 + kUncheckedDateLength + 2 + 5 * (1 + DecimalNumber::kSimpleFloatReach + 1) + 3;

    // Whether one of the ten bytes at `p` is a '"', ',' or ']'.
    static bool holdsFieldEnd(const char *p)
    {
        constexpr uint64_t kOnes = 0x0101010101010101;
        const auto zeroBytes = [](uint64_t v) { return (v - kOnes) & ~v & (kOnes * 0x80); };
        const auto ends = [&](uint64_t word) {
            return zeroBytes(word ^ (kOnes * '"')) | zeroBytes(word ^ (kOnes * ',')) |
                   zeroBytes(word ^ (kOnes * ']'));
        };
        uint64_t head, tail; // bytes 0 to 7 and 2 to 9
        std::memcpy(&head, p, sizeof head);
        std::memcpy(&tail, p + 2, sizeof tail);
        return (ends(head) | ends(tail)) != 0;
    }

    template <bool kCheckEnd>
    bool readItem(Stock &bar, float values[5])
    {
        const auto more = [this](const char *p) { return !kCheckEnd || p < m_end; };
        const char *p = m_cursor;
        if (more(p) && *p == '[')
            ++p;
        if (!more(p) || *p != '"')
            return false;
        const char *date = ++p;
        if (!kCheckEnd && date[10] == '"' && !holdsFieldEnd(date)) {
            p = date + 10; // the usual "yyyy-MM-dd", taken in one look
        } else {
            while (more(p) && *p != '"' && *p != ',' && *p != ']') {
                if (!kCheckEnd && p - date == kUncheckedDateLength)
                    return false;
                ++p;
            }
        }
        if ((kCheckEnd && m_end - p < 2) || *p != '"' || p == date || *date == '[' || p[1] != ',')
            return false;
        const size_t dateLength = size_t(p - date);
        p += 2;
        for (int field = 0; field < 5; ++field) {
            if (!more(p) || *p != '"')
                return false;
            p = DecimalNumber::scanSimpleFloat<kCheckEnd>(p + 1, m_end, values[field]);
            if (!p || !more(p) || *p != '"')
                return false;
            ++p;
            if (field < 4) {
                if (!more(p) || *p != ',')
                    return false;
                ++p;
            }
        }
        if (!more(p) || (m_end - p >= 2 && p[0] == ']' && p[1] == ']')) {
            m_finished = true; // the text or the list ends with this day
        } else if (m_end - p >= 3 && p[0] == ']' && p[1] == ',' && p[2] == '[') {
            p += 3;
        } else {
            return false;
        }
        bar.date = std::string_view(date, dateLength);
        m_cursor = p;
        return true;
    }

    const char *m_cursor;
    const char *m_end;
    bool m_finished = false;
};

// Fills in what follows from the previous close and appends the day.
void appendBar(Stock bar, const float values[5], float &previousClose, std::vector<Stock> &bars)
{
    bar.open = values[0];
    bar.close = values[1];
    bar.high = values[2];
    bar.low = values[3];
    bar.volume = values[4];
    appendDay(bars, bar, previousClose);
}

} // namespace

void parseKLineText(std::string_view text, StockSeries &series)
{
    series.text().assign(text.begin(), text.end());
    parseKLineText(series);
}

void parseKLineText(StockSeries &series)
{
    series.bars.clear();
    if (series.text().empty())
        return;
    char *const text = series.text().data();
    const std::string_view opened = afterListOpening({text, series.text().size()});
    float previousClose = -1.0f;
    float values[5];
    Stock bar;

    QuotedItemReader quoted(opened.data(), opened.data() + opened.size());
    while (!quoted.finished()) {
        makeRoom(series.bars, quoted.rest());
        if (!quoted.read(bar, values))
            break;
        appendBar(bar, values, previousClose, series.bars);
    }
    if (quoted.finished())
        return;

    // Everything else: drop the quotes (in place, behind what the quoted
    // reader took), then split at "],[" and ",".
    const std::string_view rest = upToListClosing(opened.substr(size_t(quoted.cursor() - opened.data())));
    char *clean = text + (rest.data() - text);
    ItemScanner scanner(clean, clean + copyWithoutQuotes(rest, clean));
    while (!scanner.atEnd()) {
        makeRoom(series.bars, scanner.rest());
        bool last = false;
        std::string_view date = scanner.nextField(last);
        if (!date.empty() && date.front() == '[')
            date.remove_prefix(1);
        int parts = 1;
        for (; parts < 6 && !last; ++parts)
            values[parts - 1] = scanner.nextNumber(last);
        if (parts < 6)
            continue;
        if (!last)
            scanner.skipItem();
        bar.date = date;
        appendBar(bar, values, previousClose, series.bars);
    }
}
