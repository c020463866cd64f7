#pragma once

#include "StrategyReport.h"

#include <QByteArray>
#include <QString>

// Pictures for the page, as PNG bytes; empty where none could be drawn.
struct ReportCharts {
    QByteArray account;   // against the market, drawdown below
    QByteArray histogram; // returns of the trades in 1 % bins
};

// "report.html": one page that needs nothing beside it (styles inline,
// pictures embedded).
QString reportHtml(const StrategyReport &report, const ReportCharts &charts);

// The key figures as label and text, in the order both the page and the
// file show them.
std::vector<std::pair<QString, QString>> keyFigureTexts(const StrategyReport &report);

// How the report shows a figure: two decimals, "—" when it has none.
QString reportNumber(const Figure &value);
QString reportPercent(const Figure &value);
