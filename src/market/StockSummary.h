#pragma once

#include "KLineSource.h"
#include "StockLoader.h"

#include <QString>

#include <optional>

// What a list of the market shows of one stock: its latest day and how many
// days its file holds.
struct StockSummary {
    QString code;
    QString path; // as listed, to read it again
    QString lastDate;
    float lastClose = 0;
    float lastIncrease = 0; // meaningless for a stock of one day
    int days = 0;

    bool hasIncrease() const { return days >= 2; }
};

// Reads one listed file with `loader` into `series` (both reused between
// files); nothing when it holds no day. Files too short for a run are
// listed too: they are part of the folder.
std::optional<StockSummary> summarizeStock(const QString &listedPath, const KLineSource &source,
                                           StockLoader &loader, StockSeries &series);
