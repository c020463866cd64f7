#include "SampleMarket.h"
#include "market/KLineParser.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <set>

namespace {

constexpr std::uint64_t kSeed = SampleMarket::kDefaultSeed;

// The bundled market's shape: what the run command and the tests below read.
struct SmallMarket {
    std::vector<std::string> calendar = SampleMarket::tradingDays(QDate(2021, 1, 4), 750);
    std::vector<std::string> codes = SampleMarket::stockCodes(50, kSeed);
};

std::string readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
}

bool wideBand(const std::string &code)
{
    return code.starts_with("300") || code.starts_with("301") || code.starts_with("688");
}

} // namespace

TEST(SampleMarketCalendar, SkipsWeekendsAndTheFixedHolidays)
{
    EXPECT_EQ(SampleMarket::tradingDays(QDate(2021, 9, 30), 3),
              (std::vector<std::string>{"2021-09-30", "2021-10-08", "2021-10-11"}));
    EXPECT_EQ(SampleMarket::tradingDays(QDate(2022, 4, 29), 2),
              (std::vector<std::string>{"2022-04-29", "2022-05-04"}));
    EXPECT_EQ(SampleMarket::tradingDays(QDate(2021, 1, 4), 4000).size(), 4000u);
}

// The bundled data pins the first fifty; a full market must still get a
// file per stock, none written over by a repeated code.
TEST(SampleMarketCodes, AreDistinctUpToTheLargestMarket)
{
    const std::vector<std::string> codes = SampleMarket::stockCodes(SampleMarket::kMaxStocks, kSeed);
    ASSERT_EQ(int(codes.size()), SampleMarket::kMaxStocks);
    EXPECT_EQ(std::set<std::string>(codes.begin(), codes.end()).size(), codes.size());
}

TEST(SampleMarketDeterminism, SameSeedSameBytesWhateverTheThreads)
{
    QTemporaryDir one, two;
    SampleMarket::Options options;
    options.stocks = 30;
    options.days = 200;
    options.jobs = 1;
    ASSERT_EQ(SampleMarket::writeMarket(one.path().toStdString(), options), "");
    options.jobs = 3;
    ASSERT_EQ(SampleMarket::writeMarket(two.path().toStdString(), options), "");
    const QStringList files = QDir(one.path()).entryList(QDir::Files | QDir::Hidden);
    ASSERT_EQ(files.size(), 30); // no temporary file left behind
    EXPECT_EQ(QDir(two.path()).entryList(QDir::Files | QDir::Hidden), files);
    for (const QString &name : files)
        EXPECT_EQ(readAll(one.filePath(name)), readAll(two.filePath(name))) << name.toStdString();
}

// The bundled data/ directory must stay what the program writes by default,
// or the README's run no longer shows what a user gets from regenerating it.
TEST(SampleMarketDeterminism, BundledDataIsTheDefaultOutput)
{
    QTemporaryDir fresh;
    ASSERT_EQ(SampleMarket::writeMarket(fresh.path().toStdString(), SampleMarket::Options()), "");
    const QDir bundled(QStringLiteral(ORVEL_SOURCE_DIR "/data"));
    const QStringList files = QDir(fresh.path()).entryList(QDir::Files);
    ASSERT_EQ(bundled.entryList(QDir::Files | QDir::Hidden), files);
    for (const QString &name : files)
        EXPECT_EQ(readAll(bundled.filePath(name)), readAll(fresh.filePath(name))) << name.toStdString();
}

// Every rule a trader relies on, over the whole bundled-size market: prices
// inside the day's range and the limit band, dates in the calendar in order.
TEST(SampleMarketSeries, ParseAndStayInsideTheDailyRules)
{
    const SmallMarket market;
    int fullLength = 0, sealedLimitDays = 0, limitUps = 0, suspensions = 0, lateListings = 0;
    for (const std::string &code : market.codes) {
        StockSeries series;
        const std::string text = SampleMarket::stockText(code, market.calendar, kSeed);
        parseKLineText(text, series);
        ASSERT_GT(series.size(), 6) << code;
        ASSERT_LE(series.size(), 750) << code;
        fullLength += series.size() == 750;
        auto dayIndex = [&](std::string_view date) {
            return std::find(market.calendar.begin(), market.calendar.end(), date) - market.calendar.begin();
        };
        lateListings += dayIndex(series.bars[0].date) > 0;
        const long band = wideBand(code) ? 20 : 10;
        for (int i = 0; i < series.size(); ++i) {
            const Stock &day = series.bars[size_t(i)];
            ASSERT_LT(dayIndex(day.date), 750) << code << " " << day.date;
            ASSERT_LE(day.low, std::min(day.open, day.close)) << code << " " << day.date;
            ASSERT_GE(day.high, std::max(day.open, day.close)) << code << " " << day.date;
            ASSERT_GT(day.low, 0.0f);
            if (i == 0)
                continue;
            const Stock &before = series.bars[size_t(i - 1)];
            suspensions += dayIndex(day.date) - dayIndex(before.date) > 1;
            ASSERT_LT(before.date, day.date);
            // The limit price is the previous close times the band, a half cent rounded up.
            const long cents = std::lround(before.close * 100.0);
            const double up = double((cents * (100 + band) + 50) / 100) / 100 + 1e-4;
            const double down = double((cents * (100 - band) + 50) / 100) / 100 - 1e-4;
            ASSERT_LE(day.high, up) << code << " " << day.date;
            ASSERT_GE(day.low, down) << code << " " << day.date;
            limitUps += day.close >= up - 2e-4;
            sealedLimitDays += day.open == day.close && day.high == day.low && day.open == day.high &&
                               (day.close >= up - 2e-4 || day.close <= down + 2e-4);
        }
    }
    // Most stocks trade every day; each special case shows up somewhere.
    EXPECT_GE(fullLength, 20);
    EXPECT_GT(lateListings, 0);
    EXPECT_GT(suspensions, 0);
    EXPECT_GT(limitUps, 50);
    EXPECT_GT(sealedLimitDays, 10);
}

TEST(SampleMarketErrors, AreReportedInsteadOfWritingHalfAMarket)
{
    QTemporaryDir dir;
    SampleMarket::Options options;
    options.stocks = 0;
    EXPECT_NE(SampleMarket::writeMarket(dir.path().toStdString(), options), "");
    options.stocks = 2;
    options.start = QDate();
    EXPECT_NE(SampleMarket::writeMarket(dir.path().toStdString(), options), "");
    options.start = QDate(2021, 1, 4);
    // A plain file where the directory should be.
    QFile blocker(dir.filePath("blocker"));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    EXPECT_NE(SampleMarket::writeMarket(dir.filePath("blocker").toStdString(), options), "");
    EXPECT_TRUE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden) == QStringList{"blocker"});
}
