#pragma once

#include <QString>

#include <string_view>

// Dates of the usual "yyyy-MM-dd" form between 1990 and 2099 map to small
// numbers, so the whole-market walk can share date texts and find a date's
// trades by index instead of hashing text. Any other text gets -1 and goes
// the general way.
namespace TradeDate {

constexpr int kFirstYear = 1990;
constexpr int kSlots = 110 * 12 * 31;

inline unsigned codeOf(char c) { return static_cast<unsigned char>(c); }
inline unsigned codeOf(QChar c) { return c.unicode(); }

template <typename Char>
int slotOf(const Char *text, qsizetype size)
{
    if (size != 10 || codeOf(text[4]) != '-' || codeOf(text[7]) != '-')
        return -1;
    int digits[8];
    const int positions[8] = {0, 1, 2, 3, 5, 6, 8, 9};
    for (int i = 0; i < 8; ++i) {
        const unsigned digit = codeOf(text[positions[i]]) - unsigned('0');
        if (digit > 9)
            return -1;
        digits[i] = int(digit);
    }
    const int year = digits[0] * 1000 + digits[1] * 100 + digits[2] * 10 + digits[3];
    const int month = digits[4] * 10 + digits[5];
    const int day = digits[6] * 10 + digits[7];
    if (year < kFirstYear || year >= kFirstYear + 110 || month < 1 || month > 12 || day < 1 || day > 31)
        return -1;
    return ((year - kFirstYear) * 12 + month - 1) * 31 + day - 1;
}

inline int slotOf(std::string_view date) { return slotOf(date.data(), qsizetype(date.size())); }
inline int slotOf(const QString &date) { return slotOf(date.constData(), date.size()); }

// A trade's date as a number: the slot of a date of the usual form, or for
// any other text (and the "next day" forms of pending trades) a number at or
// above kSlots naming it in a table shared by all runs of the program; few
// data sets add anything to it. Numbers never decide an order: texts do.
constexpr int kNone = -1; // no date at all, which reads as an empty text

// The number of a date as the K-line file has it (decoded as the dates of
// files are when it is not ASCII).
int idOf(std::string_view date);
// The number of any text; an empty text is kNone.
int idOfText(const QString &text);
QString text(int id);

// Writes a slot's "yyyy-MM-dd" into `out`; the end.
char *writeSlot(char *out, int slot);

} // namespace TradeDate
