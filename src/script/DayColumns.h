#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

// Scratch columns for judging a stock's days all at once, one per worker and
// reused from stock to stock. Each level of a script has its own.
struct DayColumns {
    std::vector<double> left, right;
    std::vector<unsigned char> leftDelivered, rightDelivered;
    std::vector<unsigned char> alternative, alternativeAsked; // one alternative of a statement
    std::vector<unsigned char> statement, statementAsked;     // one statement of a script

    // Makes every column hold at least `days` entries.
    void fit(size_t days)
    {
        if (left.size() >= days)
            return;
        for (std::vector<double> *column : {&left, &right})
            column->resize(days);
        for (std::vector<unsigned char> *column :
             {&leftDelivered, &rightDelivered, &alternative, &alternativeAsked, &statement, &statementAsked})
            column->resize(days);
    }
};

// Combines `parts` over the `days` from `from` into `result`: every part must
// hold (`all`) or any one suffices. Only the days `asked` (all when null)
// need an answer. A part is judged on the days earlier parts left open: a
// column at a time (`wholeColumn(part, open, column)`, which may judge other
// days too) while many are open, day by day (`oneDay(part, day)`) once few
// are, as a walk that stops at the first deciding part would.
template <class Part, class WholeColumn, class OneDay>
void combineDays(const std::vector<Part> &parts, bool all, int from, size_t days, const unsigned char *asked,
                 unsigned char *result, unsigned char *open, unsigned char *column, WholeColumn wholeColumn,
                 OneDay oneDay)
{
    const unsigned char undecided = all ? 1 : 0; // what a day holds until a part decides it
    std::fill(result, result + days, undecided);
    for (const Part &part : parts) {
        size_t openDays = 0;
        for (size_t i = 0; i < days; ++i) {
            open[i] = result[i] == undecided && (!asked || asked[i]);
            openDays += open[i];
        }
        if (openDays == 0)
            return;
        if (openDays * 8 < days) {
            for (size_t i = 0; i < days; ++i) {
                if (open[i])
                    result[i] = oneDay(part, from + int(i)) ? 1 : 0;
            }
            continue;
        }
        wholeColumn(part, open, column);
        for (size_t i = 0; i < days; ++i)
            result[i] = open[i] ? column[i] : result[i];
    }
}
