#pragma once

#include "ReportHtml.h"

// Writes "report.json", "equity.csv" and "report.html" into `dir`, making it
// when missing. Each file is replaced whole or not at all. Returns what went
// wrong, naming the file, or an empty text.
QString writeReportFiles(const QString &dir, const StrategyReport &report, const ReportCharts &charts);
