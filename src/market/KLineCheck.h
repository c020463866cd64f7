#pragma once

#include "Stock.h"

#include <QString>

#include <string_view>
#include <vector>

// What can be wrong with a K-line file: each of these gives wrong trades or
// wrong text in the results without any message from the run itself.
enum class KLineProblem {
    DatesNotIncreasing, // trades would be sold before they were bought
    BadPrice,           // a price of zero or less, or not a finite number
    HighBelowLow,
    ControlBytes, // NUL or control bytes, which would reach output.csv
    TooFewDays,   // six days or fewer: the run skips the stock
};

struct KLineFinding {
    KLineProblem problem;
    int count = 0;     // days (bytes for control bytes) that show it
    QString firstDate; // the first day that shows it, empty where no day does
};

// A close that moved more than the plausible daily range: often a listing
// day, sometimes a history that mixes price adjustments.
struct KLineJump {
    QString date;
    double percent = 0;
};

struct KLineCheck {
    int days = 0;
    std::vector<KLineFinding> problems;
    std::vector<KLineJump> jumps;
};

// Checks the K-line text in `series.text()` as a run would read it; the
// series is parsed on the way.
KLineCheck checkKLineText(StockSeries &series);

// The same for text held elsewhere (a downloaded reply), checked on a copy.
KLineCheck checkKLineText(std::string_view text);

// The problem in the user's words.
QString problemText(KLineProblem problem);
