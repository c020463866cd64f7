#pragma once

// Calendar fields from a count of seconds, by arithmetic alone. The crash
// handler names its report by the local time, but localtime_r may take the
// time-zone lock and read files, neither of which is allowed in a signal
// handler; the handler adds a UTC offset taken once at start-up and converts
// here instead.
struct CrashClockTime {
    int year = 1970;
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;
};

constexpr CrashClockTime crashClockTime(long long secondsSinceEpoch) noexcept
{
    // Floor division, so moments before 1970 still land on the right day.
    long long days = secondsSinceEpoch / 86400;
    long long secondOfDay = secondsSinceEpoch % 86400;
    if (secondOfDay < 0) {
        secondOfDay += 86400;
        --days;
    }

    // Days to a proleptic Gregorian date, counting in 400-year eras that
    // start on 1 March so the leap day falls at the end of each year.
    days += 719468;
    const long long era = (days >= 0 ? days : days - 146096) / 146097;
    const long long dayOfEra = days - era * 146097;
    const long long yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const long long dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const long long marchMonth = (5 * dayOfYear + 2) / 153;

    CrashClockTime t;
    t.day = static_cast<int>(dayOfYear - (153 * marchMonth + 2) / 5 + 1);
    t.month = static_cast<int>(marchMonth < 10 ? marchMonth + 3 : marchMonth - 9);
    t.year = static_cast<int>(yearOfEra + era * 400 + (t.month <= 2 ? 1 : 0));
    t.hour = static_cast<int>(secondOfDay / 3600);
    t.minute = static_cast<int>(secondOfDay % 3600 / 60);
    t.second = static_cast<int>(secondOfDay % 60);
    return t;
}
