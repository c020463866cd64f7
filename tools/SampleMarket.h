#pragma once

#include <QDate>

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

// A made-up but A-share-like market in the K-line text format: the bundled
// sample data and the whole market the benchmarks walk. Everything follows
// from the seed through our own generator, so every machine and every
// standard library produces the same bytes.
namespace SampleMarket {

constexpr std::uint64_t kDefaultSeed = 20210104;
// More codes than this do not fit the code ranges we draw from.
constexpr int kMaxStocks = 9000;

struct Options {
    int stocks = 50;
    int days = 750; // trading days of the calendar; late listings and suspensions have fewer bars
    std::uint64_t seed = kDefaultSeed;
    QDate start = QDate(2021, 1, 4);
    int jobs = 0; // writer threads; 0 = one per core
};

// The first `days` trading days from `start` on ("yyyy-MM-dd"): weekdays
// outside New Year's Day, the May Day and the National Day holidays.
std::vector<std::string> tradingDays(QDate start, int days);

// `count` distinct six-digit codes, ascending, drawn from the Shanghai
// (600, 601, 603, 605, 688) and Shenzhen (000, 001, 002, 003, 300, 301) ranges.
std::vector<std::string> stockCodes(int count, std::uint64_t seed);

// Replaces `out` with the whole file of one stock over `calendar`. A stock's
// bars depend only on the seed, its code and the calendar, not on which
// other stocks are generated with it.
void writeStockText(std::string_view code, const std::vector<std::string> &calendar, std::uint64_t seed,
                    std::string &out);
std::string stockText(std::string_view code, const std::vector<std::string> &calendar, std::uint64_t seed);

// Writes one file per stock, named by its code, into `dir` (created when
// missing; other files in it are left alone). Each file is written beside
// its target and renamed, so an interrupted run leaves no half file.
// Returns an error text, empty on success.
std::string writeMarket(const std::filesystem::path &dir, const Options &options);

} // namespace SampleMarket
