#pragma once

#include "StrategyReport.h"

#include <QByteArray>

// "report.json": every figure of the report; a figure without a value is null.
QByteArray reportJson(const StrategyReport &report);

// "equity.csv": one line per calendar day, with a header.
QByteArray equityCsv(const StrategyReport &report);
