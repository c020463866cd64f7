#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <random>
#include <vector>

// One record of a terminal's day file, prices in the file's integer units.
struct DayRecord {
    uint32_t date;
    int32_t open, high, low, close;
    uint32_t volume;
};

inline QByteArray dayFileBytes(const std::vector<DayRecord> &records)
{
    QByteArray bytes;
    for (const DayRecord &r : records) {
        const uint32_t fields[8] = {
            r.date, uint32_t(r.open), uint32_t(r.high), uint32_t(r.low), uint32_t(r.close), 0, r.volume, 0};
        bytes.append(reinterpret_cast<const char *>(fields),
                     sizeof fields); // the test hosts are little-endian
    }
    return bytes;
}

// "1055" with two decimals as "10.55": the text a price in cents stands for.
inline QString decimalText(int64_t units, int decimals)
{
    const int64_t scale = decimals == 3 ? 1000 : 100;
    char text[32];
    std::snprintf(text, sizeof text, "%lld.%0*lld", static_cast<long long>(units / scale), decimals,
                  static_cast<long long>(units % scale));
    return QString::fromLatin1(text);
}

// The same days as the program's own K-line text.
inline QByteArray klineTextOf(const std::vector<DayRecord> &records, int decimals = 2)
{
    QString text = QStringLiteral("[");
    for (const DayRecord &r : records) {
        const QString date = QString::number(r.date);
        text +=
            QStringLiteral("%1[\"%2-%3-%4\",\"%5\",\"%6\",\"%7\",\"%8\",\"%9\"]")
                .arg(QLatin1String(text.size() == 1 ? "" : ","), date.left(4), date.mid(4, 2), date.right(2))
                .arg(decimalText(r.open, decimals), decimalText(r.close, decimals),
                     decimalText(r.high, decimals), decimalText(r.low, decimals))
                .arg(r.volume);
    }
    return (text + QLatin1Char(']')).toLatin1();
}

// A random walk of `days` trading days from 2021-01-04 (weekdays of short
// months only, so every date is real), prices in cents.
inline std::vector<DayRecord> randomDays(int days, unsigned seed)
{
    std::mt19937 random(seed);
    std::vector<DayRecord> records;
    int32_t close = 1000 + int32_t(random() % 2000);
    for (int i = 0; i < days; ++i) {
        const uint32_t month = 1 + uint32_t(i / 20), day = 1 + uint32_t(i % 20);
        const int32_t open = std::max(1, close + int32_t(random() % 101) - 50);
        close = std::max(1, open + int32_t(random() % 201) - 100);
        const int32_t high = std::max(open, close) + int32_t(random() % 30);
        const int32_t low = std::max(1, std::min(open, close) - int32_t(random() % 30));
        records.push_back({(2021 + month / 13) * 10000 + (1 + (month - 1) % 12) * 100 + day, open, high, low,
                           close, 100000 + uint32_t(random() % 5000000)});
    }
    return records;
}
