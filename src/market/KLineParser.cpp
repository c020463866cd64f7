#include "KLineParser.h"

#include "DecimalNumber.h"

#include <cstring>

namespace {

// The list proper: from the "[" of the first "[[" (or the whole text when
// there is none) up to the first "]]" after that.
std::string_view listPart(std::string_view text)
{
    const size_t open = text.find("[[");
    if (open != std::string_view::npos)
        text.remove_prefix(open + 1);
    const size_t close = text.find("]]");
    if (close != std::string_view::npos)
        text = text.substr(0, close);
    return text;
}

// Copies `text` without its double quotes; returns the length written.
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

    void setCursorToStart() { m_cursor = m_begin; }

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

} // namespace

void parseKLineText(std::string_view text, StockSeries &series)
{
    series.bars.clear();
    const std::string_view list = listPart(text);
    char *clean = series.textBuffer(list.size() + 1);
    const size_t length = copyWithoutQuotes(list, clean);
    ItemScanner scanner(clean, clean + length);

    float previousClose = -1.0f;
    while (!scanner.atEnd()) {
        bool last = false;
        std::string_view date = scanner.nextField(last);
        if (!date.empty() && date.front() == '[')
            date.remove_prefix(1);
        float values[5];
        int parts = 1;
        for (; parts < 6 && !last; ++parts)
            values[parts - 1] = scanner.nextNumber(last);
        if (parts < 6)
            continue;
        if (!last)
            scanner.skipItem();

        Stock bar;
        bar.date = date;
        bar.open = values[0];
        bar.close = values[1];
        bar.high = values[2];
        bar.low = values[3];
        bar.volume = values[4];
        bar.change = bar.close - previousClose;
        bar.increase = bar.change * 100 / previousClose;
        previousClose = bar.close;
        series.bars.push_back(bar);
    }
}
