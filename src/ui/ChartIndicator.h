#pragma once

#include "script/DmiPeriods.h"

#include <QColor>
#include <QString>

#include <vector>

// The indicator the chart shows besides the averages: MACD, KDJ or DMI in a
// pane of their own, or the BOLL bands over the candles.
enum class ChartIndicator { Macd, Kdj, Boll, Dmi };

// One drawn line: the script term that gives its values and its colour.
// The graph is named `label`, else after the term's name ("macd.diff").
struct ChartLine {
    QString term;
    QColor colour;
    QString label = {};

    QString name() const { return label.isEmpty() ? term.section(QLatin1Char(','), 0, 0) : label; }
};

// "MACD", "KDJ", "BOLL", "DMI".
QString chartIndicatorText(ChartIndicator indicator);
std::vector<ChartLine> chartIndicatorLines(ChartIndicator indicator, const DmiPeriods &dmi);
// The 5-, 10- and 20-day averages over the candles.
std::vector<ChartLine> chartAverageLines();
