#pragma once

#include "RunCounts.h"
#include "script/StrategyConfig.h"

#include <QString>

// What the user is told about a run beside its trades.
namespace RunNotes {

// The settings the run used, on one line: the data folder and the stocks
// read, the sale point, rapid take-profit, holding days, take-profit,
// stop-loss and buys per day. The script's own lines, "config.conf" and the
// unknown-key rule meet in these; the line shows what came out.
QString effectiveSettings(const StrategyConfig &config, const RunCounts &counts);

// Why a run gave no trade at all, when that can be told; else empty.
QString noDataReason(const StrategyConfig &config, const RunCounts &counts);

} // namespace RunNotes
