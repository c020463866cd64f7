#include "TradeDate.h"

#include "market/TextFile.h"

#include <QHash>

#include <deque>
#include <mutex>

namespace TradeDate {

namespace {

// Texts of other forms, appended and never removed: a number once given
// stays valid, so records may outlive the run that made them.
struct OtherTexts {
    std::mutex mutex;
    std::deque<QString> texts;
    QHash<QString, int> numbers;
};

OtherTexts &otherTexts()
{
    static OtherTexts table;
    return table;
}

} // namespace

int idOfText(const QString &text)
{
    if (text.isEmpty())
        return kNone;
    const int slot = slotOf(text);
    if (slot >= 0)
        return slot;
    OtherTexts &table = otherTexts();
    const std::lock_guard lock(table.mutex);
    const auto found = table.numbers.constFind(text);
    if (found != table.numbers.cend())
        return *found;
    const int id = kSlots + int(table.texts.size());
    table.texts.push_back(text);
    table.numbers.insert(text, id);
    return id;
}

int idOf(std::string_view date)
{
    const int slot = slotOf(date);
    return slot >= 0 ? slot : idOfText(TextFile::decodeDate(date));
}

char *writeSlot(char *out, int slot)
{
    const int year = kFirstYear + slot / (12 * 31);
    const int month = slot / 31 % 12 + 1;
    const int day = slot % 31 + 1;
    const int digits[8] = {year / 1000, year / 100 % 10, year / 10 % 10, year % 10,
                           month / 10,  month % 10,      day / 10,       day % 10};
    const int positions[8] = {0, 1, 2, 3, 5, 6, 8, 9};
    out[4] = out[7] = '-';
    for (int i = 0; i < 8; ++i)
        out[positions[i]] = char('0' + digits[i]);
    return out + 10;
}

QString text(int id)
{
    if (id < 0)
        return {};
    if (id < kSlots) {
        char buffer[10];
        return QString::fromLatin1(buffer, writeSlot(buffer, id) - buffer);
    }
    OtherTexts &table = otherTexts();
    const std::lock_guard lock(table.mutex);
    return table.texts[size_t(id - kSlots)];
}

} // namespace TradeDate
