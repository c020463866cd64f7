#pragma once

#include "KLineSource.h"
#include "Stock.h"
#include "StockSkip.h"

#include <QString>

#include <vector>

// Loads listed files one after another into a series that keeps its buffers.
class StockLoader {
public:
    // Reads the file for this listing entry: `dir`, "/", and the entry's last
    // six characters, in the K-line `format`. True when the series holds more
    // than six days.
    bool loadStockSeries(const QString &listedPath, const QString &dir, const QString &format,
                         StockSeries &series)
    {
        return load(listedPath, KLineSource{dir, format}, series);
    }

    // The same for a listing of `source`: the program's own text files are
    // re-opened through their code as above; day and CSV files are read as
    // listed, their code taken from the file name.
    bool load(const QString &listedPath, const KLineSource &source, StockSeries &series);

    // Reads `path` itself in the given format (not "auto"); the code is left
    // to the caller. A malformed file gives one log line naming it. False
    // when it cannot be read.
    bool readFile(const QString &path, KLineFormat format, StockSeries &series);

    // Why the last load gave no series to walk.
    StockSkip lastSkip() const { return m_lastSkip; }

private:
    ByteBuffer m_bytes; // day and CSV files, read aside
    StockSkip m_lastSkip = StockSkip::None;
};
