#pragma once

// The generated whole market the market benchmarks walk: 5,000 stocks x
// 4,000 days, generated once into ORVEL_BENCH_MARKET (default: a folder
// beside the build) and reused by later runs.
#include "SampleMarket.h"

#include <QDate>
#include <QFile>
#include <QString>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace BenchMarket {

constexpr int kStocks = 5000;
constexpr int kDays = 4000;

inline std::string catCommand(const QString &dir)
{
    return "find '" + dir.toStdString() + "' -type f -exec cat {} + > /dev/null";
}

// The market, generated when missing and read once so that every benchmark
// starts from the page cache.
inline QString marketDir()
{
    static const QString prepared = [] {
        const char *custom = std::getenv("ORVEL_BENCH_MARKET");
        const QString dir = custom ? QString::fromLocal8Bit(custom) : QStringLiteral(ORVEL_BENCH_MARKET);
        const QString stamp = dir + QStringLiteral("/.complete");
        if (!QFile::exists(stamp)) {
            SampleMarket::Options options;
            options.stocks = kStocks;
            options.days = kDays;
            options.start = QDate(2005, 1, 4);
            const std::string error = SampleMarket::writeMarket(dir.toStdString(), options);
            if (!error.empty()) {
                std::fprintf(stderr, "cannot generate the market: %s\n", error.c_str());
                std::exit(1);
            }
            QFile(stamp).open(QIODevice::WriteOnly);
        }
        if (std::system(catCommand(dir).c_str()) != 0)
            std::fprintf(stderr, "cannot read the market in %s\n", qPrintable(dir));
        return dir;
    }();
    return prepared;
}

} // namespace BenchMarket
