#pragma once

#include <QString>

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
