#include "ReportParts.h"

#include <algorithm>
#include <map>

namespace {

// Count, wins and sum of returns of a group of trades.
struct Tally {
    int count = 0;
    int wins = 0;
    double sum = 0;

    void add(double r)
    {
        ++count;
        wins += r > 0;
        sum += r;
    }
    Figure winRate() const { return count ? figure(double(wins) / count * 100) : std::nullopt; }
    Figure average() const { return count ? figure(sum / count) : std::nullopt; }
};

Figure median(std::vector<double> values)
{
    if (values.empty())
        return std::nullopt;
    const size_t middle = values.size() / 2;
    std::nth_element(values.begin(), values.begin() + middle, values.end());
    const double upper = values[middle];
    if (values.size() % 2)
        return figure(upper);
    const double lower = *std::max_element(values.begin(), values.begin() + middle);
    return figure((lower + upper) / 2);
}

Figure ratio(double numerator, double denominator)
{
    return denominator != 0 ? figure(numerator / denominator) : std::nullopt;
}

} // namespace

TradeFigures tradeFigures(const std::vector<ReportTrade> &trades)
{
    TradeFigures f;
    Tally all;
    double winSum = 0, lossSum = 0;
    long long holdSum = 0;
    int winStreak = 0, lossStreak = 0;
    std::vector<double> returns, holds;
    for (const ReportTrade &trade : trades) {
        f.summaryCount += trade.countsInSummary;
        if (!trade.isClosed())
            continue;
        const double r = trade.returnPercent();
        all.add(r);
        returns.push_back(r);
        holds.push_back(trade.holdDays);
        holdSum += trade.holdDays;
        (r > 0 ? winSum : lossSum) += r;
        f.wins += r > 0;
        f.losses += r < 0;
        // A trade that neither wins nor loses ends both runs.
        winStreak = r > 0 ? winStreak + 1 : 0;
        lossStreak = r < 0 ? lossStreak + 1 : 0;
        f.maxWinStreak = std::max(f.maxWinStreak, winStreak);
        f.maxLossStreak = std::max(f.maxLossStreak, lossStreak);
    }
    f.count = all.count;
    f.winRate = all.winRate();
    f.averageReturn = all.average();
    f.medianReturn = median(returns);
    f.averageWin = f.wins ? figure(winSum / f.wins) : std::nullopt;
    f.averageLoss = f.losses ? figure(lossSum / f.losses) : std::nullopt;
    if (f.averageWin && f.averageLoss)
        f.payoffRatio = ratio(*f.averageWin, -*f.averageLoss);
    if (f.count)
        f.profitFactor = ratio(winSum, -lossSum);
    if (!returns.empty()) {
        f.best = *std::max_element(returns.begin(), returns.end());
        f.worst = *std::min_element(returns.begin(), returns.end());
        f.averageHoldDays = double(holdSum) / f.count;
    }
    f.medianHoldDays = median(holds);
    return f;
}

std::vector<ExitFigures> exitFigures(const std::vector<ReportTrade> &trades)
{
    const TradeExit exits[] = {TradeExit::SalePoint, TradeExit::TakeProfit, TradeExit::StopLoss,
                               TradeExit::HoldExpired};
    Tally tallies[4];
    for (const ReportTrade &trade : trades) {
        const auto found = std::find(std::begin(exits), std::end(exits), trade.exit);
        if (trade.isClosed() && found != std::end(exits))
            tallies[found - std::begin(exits)].add(trade.returnPercent());
    }
    std::vector<ExitFigures> figures;
    for (int i = 0; i < 4; ++i)
        figures.push_back({exits[i], tallies[i].count, tallies[i].winRate(), tallies[i].average()});
    return figures;
}

std::vector<YearFigures> yearTradeFigures(const std::vector<ReportTrade> &trades)
{
    std::map<QString, Tally> years;
    Tally *current = nullptr; // sales come mostly in date order: look a year up when it changes
    QString currentYear;
    for (const ReportTrade &trade : trades) {
        if (!trade.isClosed())
            continue;
        const QStringView year = QStringView(trade.saleDate).left(4);
        if (!current || year != currentYear) {
            currentYear = year.toString();
            current = &years[currentYear];
        }
        current->add(trade.returnPercent());
    }
    std::vector<YearFigures> figures;
    for (const auto &[year, tally] : years)
        figures.push_back({year, tally.count, tally.winRate(), tally.average(), {}, {}});
    return figures;
}

std::vector<HistogramBin> returnHistogram(const std::vector<ReportTrade> &trades)
{
    std::vector<long long> bins;
    for (const ReportTrade &trade : trades) {
        if (!trade.isClosed())
            continue;
        const double r = std::floor(trade.returnPercent());
        if (std::isfinite(r))
            bins.push_back(std::llround(std::clamp(r, -1e15, 1e15)));
    }
    std::sort(bins.begin(), bins.end());
    std::vector<HistogramBin> histogram;
    for (long long bin : bins) {
        if (histogram.empty() || histogram.back().from != bin)
            histogram.push_back({bin, 0});
        ++histogram.back().count;
    }
    return histogram;
}
