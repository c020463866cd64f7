#include "ReportParts.h"

std::vector<double> marketIndex(const ReportMarket &market, const ReportCalendar &calendar)
{
    // Each day's mean close-to-close return over the stocks that traded on it
    // and on the calendar's day before; summed in listing order, so the
    // figure is the same however many threads walked the files.
    std::vector<double> sums(size_t(calendar.size()), 0.0);
    std::vector<int> counts(size_t(calendar.size()), 0);
    for (const ReportMarket::Closes *stock : market.stocks()) {
        int previous = -2;
        for (size_t i = 0; i < stock->days.size(); ++i) {
            const int day = calendar.indexOfDay[stock->days[i]];
            if (day == previous + 1) {
                const double r = double(stock->closes[i]) / double(stock->closes[i - 1]) - 1;
                if (std::isfinite(r)) {
                    sums[size_t(day)] += r;
                    ++counts[size_t(day)];
                }
            }
            previous = day;
        }
    }
    std::vector<double> levels;
    double level = 1;
    for (int day = 0; day < calendar.size(); ++day) {
        if (counts[size_t(day)] > 0)
            level *= 1 + sums[size_t(day)] / counts[size_t(day)];
        levels.push_back(level);
    }
    return levels;
}
