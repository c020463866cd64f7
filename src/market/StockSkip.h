#pragma once

#include <QString>

#include <array>

// Why a listed stock gave no series to walk.
enum class StockSkip {
    None,
    Unreadable,
    TooLarge,
    NotRegularFile, // a FIFO, device, link or folder where a stock file should be
    TooFewDays,     // six days or fewer
    OtherFormat,    // config.source.k.format is not "default"
};

// The reason in the user's words.
QString stockSkipText(StockSkip skip);

// How many listed files ended with each outcome; `None` counts the stocks read.
struct StockSkipCounts {
    static constexpr size_t kOutcomes = size_t(StockSkip::OtherFormat) + 1;
    std::array<int, kOutcomes> byOutcome{};

    void add(StockSkip skip) { ++byOutcome[size_t(skip)]; }
    int count(StockSkip skip) const { return byOutcome[size_t(skip)]; }
    int read() const { return count(StockSkip::None); }
    StockSkipCounts &operator+=(const StockSkipCounts &other)
    {
        for (size_t i = 0; i < kOutcomes; ++i)
            byOutcome[i] += other.byOutcome[i];
        return *this;
    }
};
