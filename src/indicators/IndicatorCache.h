#pragma once

#include "StockIndicator.h"

#include <QHash>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

// One term's line over a stock: its value per bar and whether it has one.
struct IndicatorLine {
    std::vector<float> values;
    std::vector<unsigned char> defined;
};

// The results of each distinct indicator over the stock being bound, so that
// terms reading different lines of one indicator ("dmi.pdi", "dmi.adx" …) or
// the same one twice compute it once; and the lines terms read, so that
// identical terms share one line however many times a script repeats them.
// Each worker owns one and hands it to every term it binds; clear() it before
// the next stock.
class IndicatorCache {
public:
    using Results = std::vector<IndicatorValue>;
    using Factory = std::function<std::unique_ptr<StockIndicator>()>;
    using LineFiller = std::function<void(IndicatorLine &)>;

    // The results of the indicator named `key` over `bars`, computed on
    // first use since the last clear(). An indicator that `make` cannot
    // make (a period below one) has no value on any bar.
    const Results &results(const QString &key, StockBars bars, const Factory &make);

    // The line named `key`, filled by `fill` on first use since the last
    // clear(). Terms keep it while they read it: the next stock refills the
    // same line in place.
    std::shared_ptr<const IndicatorLine> line(const QString &key, const LineFiller &fill);

    void clear();

private:
    struct Entry {
        QString key;
        std::unique_ptr<StockIndicator> indicator;
        bool filled = false;
        Results results;
    };
    struct LineEntry {
        std::shared_ptr<IndicatorLine> line;
        bool filled = false;
    };
    std::vector<Entry> m_entries; // few per script; kept with their buffers from stock to stock
    QHash<QString, LineEntry> m_lines;
};
