#pragma once

#include <QString>

// The account the report follows: how much money, how many positions at once
// and what each trade costs. Percentages are plain numbers (0.025 means 0.025 %).
struct ReportSettings {
    double capital = 1000000;
    int slotCount = 10;        // positions held at once
    double commission = 0.025; // per side, of the traded value
    double commissionMin = 5;  // yuan, per order
    double stamp = 0.05;       // of sales only
    double transfer = 0.001;   // per side

    // Stores a "config.report.*" value; false when the key is not one of them.
    bool parseConfigValue(const QString &key, const QString &value);

    // Costs of one order of the given value.
    double buyCosts(double value) const;
    double saleCosts(double value) const;
};
