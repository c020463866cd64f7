#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

// Scratch columns for judging a stock's days all at once, one per worker and
// reused from stock to stock. Each level of a script has its own.
struct DayColumns {
    std::vector<double> left, right;
    std::vector<unsigned char> leftDelivered, rightDelivered;
    std::vector<unsigned char> alternative; // one alternative of a statement
    std::vector<unsigned char> statement;   // one statement of a script

    // Makes every column hold at least `days` entries.
    void fit(size_t days)
    {
        if (left.size() >= days)
            return;
        for (std::vector<double> *column : {&left, &right})
            column->resize(days);
        for (std::vector<unsigned char> *column : {&leftDelivered, &rightDelivered, &alternative, &statement})
            column->resize(days);
    }
};

// Combines `parts` over the `days` from `from` into `result`: every part must
// hold (`all`) or any one suffices. A part is judged for all days at once
// (`wholeColumn(part, column)`) while many days are still open; once few are,
// it is asked only on those (`oneDay(part, day)`), as a day-by-day walk that
// stops at the first deciding part would: a costly last part is then rarely
// judged at all.
template <class Part, class WholeColumn, class OneDay>
void combineDays(const std::vector<Part> &parts, bool all, int from, size_t days, unsigned char *result,
                 unsigned char *column, WholeColumn wholeColumn, OneDay oneDay)
{
    const unsigned char open = all ? 1 : 0; // a day the parts so far left undecided
    std::fill(result, result + days, open);
    for (const Part &part : parts) {
        const size_t undecided = size_t(std::count(result, result + days, open));
        if (undecided == 0)
            return;
        if (undecided * 8 < days) {
            for (size_t i = 0; i < days; ++i) {
                if (result[i] == open)
                    result[i] = oneDay(part, from + int(i)) ? 1 : 0;
            }
            continue;
        }
        wholeColumn(part, column);
        for (size_t i = 0; i < days; ++i)
            result[i] = result[i] == open ? column[i] : result[i];
    }
}
