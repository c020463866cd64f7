// Speed of the K-line parser on one core, in bytes of text per second.
// Uses the real market history beside the project when present, else a
// generated market of the same shape.
#include "SampleMarket.h"
#include "market/KLineParser.h"

#include <benchmark/benchmark.h>

#include <QDir>
#include <QFile>

#include <string>
#include <vector>

namespace {

std::vector<std::string> loadTexts()
{
    std::vector<std::string> texts;
    const QDir real(QStringLiteral(ORVEL_SHARED_DIR "/data/a-share-daily"));
    for (const QString &name : real.entryList(QDir::Files)) {
        QFile file(real.filePath(name));
        if (file.open(QIODevice::ReadOnly))
            texts.push_back(file.readAll().toStdString());
    }
    if (texts.empty()) {
        const auto calendar = SampleMarket::tradingDays(QDate(2005, 1, 4), 4000);
        for (const std::string &code : SampleMarket::stockCodes(300, SampleMarket::kDefaultSeed))
            texts.push_back(SampleMarket::stockText(code, calendar, SampleMarket::kDefaultSeed));
    }
    return texts;
}

void parseMarket(benchmark::State &state)
{
    static const std::vector<std::string> texts = loadTexts();
    StockSeries series;
    size_t bytes = 0, bars = 0;
    for (auto _ : state) {
        for (const std::string &text : texts) {
            parseKLineText(text, series);
            bytes += text.size();
            bars += series.bars.size();
        }
    }
    state.SetBytesProcessed(int64_t(bytes));
    state.counters["bars/s"] = benchmark::Counter(double(bars), benchmark::Counter::kIsRate);
}

} // namespace

BENCHMARK(parseMarket)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
