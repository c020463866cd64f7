#include "ReportParts.h"

namespace {

// Per day number: the sum and count of close-to-close returns of the stocks
// whose bar before lies on the latest earlier day seen for that day. A stock
// counts on a day only when it also traded on the calendar's day before, and
// no stock's bar before can be later than that day: so when anyone counts,
// the latest seen is that day and the sum holds exactly those stocks.
struct DaySums {
    std::vector<char> present;
    std::vector<long long> latest; // rank of the latest bar before; -1: none
    std::vector<double> sums;
    std::vector<int> counts;

    explicit DaySums(size_t days) : present(days, 0), latest(days, -1), sums(days, 0.0), counts(days, 0) {}

    // Stocks in listing order, so the sums are the same however many
    // threads walked the files.
    template <typename Rank>
    void add(const ReportMarket::Closes &stock, Rank rank)
    {
        for (size_t i = 0; i < stock.days.size(); ++i) {
            const uint32_t day = stock.days[i];
            present[day] = 1;
            if (i == 0)
                continue;
            const long long before = rank(stock.days[i - 1]);
            if (before >= rank(day) || before < latest[day])
                continue;
            if (before > latest[day]) {
                latest[day] = before;
                sums[day] = 0;
                counts[day] = 0;
            }
            const double r = double(stock.closes[i]) / double(stock.closes[i - 1]) - 1;
            if (std::isfinite(r)) {
                sums[day] += r;
                ++counts[day];
            }
        }
    }
};

} // namespace

MarketDays marketDays(const ReportMarket &market)
{
    const std::vector<const ReportMarket::Closes *> stocks = market.stocks();
    DaySums sums(market.dayCount());
    MarketDays result;
    if (market.daysInDateOrder()) {
        // One pass finds the days and sums their returns.
        for (const ReportMarket::Closes *stock : stocks)
            sums.add(*stock, [](uint32_t day) { return (long long)day; });
        result.calendar = market.calendarOf(sums.present);
    } else {
        result.calendar = market.calendar();
        const std::vector<int> &index = result.calendar.indexOfDay;
        for (const ReportMarket::Closes *stock : stocks)
            sums.add(*stock, [&index](uint32_t day) { return (long long)index[day]; });
    }
    const ReportCalendar &calendar = result.calendar;
    double level = 1;
    std::vector<uint32_t> dayAt(size_t(calendar.size()));
    for (size_t day = 0; day < calendar.indexOfDay.size(); ++day) {
        if (calendar.indexOfDay[day] >= 0)
            dayAt[size_t(calendar.indexOfDay[day])] = uint32_t(day);
    }
    for (int t = 0; t < calendar.size(); ++t) {
        const uint32_t day = dayAt[size_t(t)];
        const bool counts =
            t > 0 && sums.counts[day] > 0 &&
            sums.latest[day] == (market.daysInDateOrder() ? (long long)dayAt[size_t(t - 1)] : t - 1);
        if (counts)
            level *= 1 + sums.sums[day] / sums.counts[day];
        result.index.push_back(level);
    }
    return result;
}
