#pragma once

#include <QString>

// The two periods of a script's DMI: those of its first `dmi.` term, so that
// a chart shows the lines the strategy reads, else 14 and 6.
struct DmiPeriods {
    int n = 14;
    int m = 6;

    static DmiPeriods ofScript(const QString &scriptText);
    bool operator==(const DmiPeriods &) const = default;
};
