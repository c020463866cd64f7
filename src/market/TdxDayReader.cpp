#include "TdxDayReader.h"

#include "DecimalNumber.h"

#include <bit>
#include <cstdint>
#include <cstring>

namespace {

constexpr size_t kDateLength = 10; // "yyyy-MM-dd"

uint32_t littleEndian32(const char *bytes)
{
    uint32_t value;
    std::memcpy(&value, bytes, sizeof value);
    if constexpr (std::endian::native == std::endian::big)
        value = (value >> 24) | ((value >> 8) & 0xff00u) | ((value << 8) & 0xff0000u) | (value << 24);
    return value;
}

bool isPossibleDate(uint32_t date)
{
    const uint32_t year = date / 10000, month = date / 100 % 100, day = date % 100;
    if (year < 1900 || year > 2099 || month < 1 || month > 12 || day < 1)
        return false;
    constexpr uint32_t kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return day <= kDays[month - 1] + (month == 2 && leap ? 1 : 0);
}

void writeDate(uint32_t date, char *out)
{
    char digits[8];
    for (int i = 7; i >= 0; --i, date /= 10)
        digits[i] = char('0' + date % 10);
    std::memcpy(out, digits, 4);
    out[4] = '-';
    std::memcpy(out + 5, digits + 4, 2);
    out[7] = '-';
    std::memcpy(out + 8, digits + 6, 2);
}

} // namespace

QString TdxDayReader::read(std::string_view bytes, int priceDecimals, StockSeries &series)
{
    series.bars.clear();
    if (bytes.size() % kRecordSize != 0)
        return QStringLiteral("size %1 is not a whole number of %2-byte days")
            .arg(bytes.size())
            .arg(kRecordSize);
    const size_t count = bytes.size() / kRecordSize;
    series.text().resize(count * kDateLength);
    char *dates = series.text().data();
    series.bars.reserve(count);
    float previousClose = -1.0f;
    size_t skipped = 0;
    for (const char *record = bytes.data(); record != bytes.data() + bytes.size(); record += kRecordSize) {
        const uint32_t date = littleEndian32(record);
        // Prices are signed in the file: anything at or below 0 is damage.
        int32_t prices[4]; // open, high, low, close
        for (int i = 0; i < 4; ++i)
            prices[i] = int32_t(littleEndian32(record + 4 + 4 * i));
        if (!isPossibleDate(date) || prices[0] <= 0 || prices[1] <= 0 || prices[2] <= 0 || prices[3] <= 0) {
            ++skipped;
            continue;
        }
        writeDate(date, dates);
        Stock bar;
        bar.date = std::string_view(dates, kDateLength);
        dates += kDateLength;
        bar.open = DecimalNumber::fromDigits(uint64_t(prices[0]), priceDecimals);
        bar.high = DecimalNumber::fromDigits(uint64_t(prices[1]), priceDecimals);
        bar.low = DecimalNumber::fromDigits(uint64_t(prices[2]), priceDecimals);
        bar.close = DecimalNumber::fromDigits(uint64_t(prices[3]), priceDecimals);
        bar.volume = DecimalNumber::fromDigits(littleEndian32(record + 24), 0);
        appendDay(series.bars, bar, previousClose);
    }
    if (skipped == 0)
        return {};
    return QStringLiteral("%1 of %2 days skipped (impossible date or price)").arg(skipped).arg(count);
}
