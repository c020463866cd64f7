#include "TestSupport.h"
#include "engine/OutputCsv.h"
#include "engine/RunSummary.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>

namespace {

TradeRow trade(const char *code, const char *date, double volume, double buy = 10, double sale = 11)
{
    TradeRow r;
    r.code = QString::fromLatin1(code);
    r.buyDate = TradeDate::idOfText(QString::fromLatin1(date));
    r.saleDate = r.buyDate;
    r.volumeKey = volume;
    r.buyPrice = buy;
    r.salePrice = sale;
    r.holdDays = 2;
    r.status = TradeStatus::SaleSignal;
    r.summaryCount = SummaryCount::Counted;
    return r;
}

QStringList codes(const TradeBook &book)
{
    QStringList list;
    for (const TradeRow &r : book.rows())
        list << r.code;
    return list;
}

} // namespace

TEST(DayLimit, KeepsTheLargestVolumesAndTheEarlierFiledOnTies)
{
    TradeBook book;
    for (const TradeRow &r : {trade("a", "d1", 5), trade("b", "d1", 9), trade("c", "d1", 5),
                                 trade("d", "d1", 7), trade("e", "d2", 1), trade("f", "d0", 1)})
        book.file(r);
    TradeBook ascending = book;
    book.applyDayLimit(3, BuyOrder::Descending);
    EXPECT_EQ(codes(book), (QStringList{"f", "b", "d", "a", "e"}));
    ascending.applyDayLimit(3, BuyOrder::Ascending);
    EXPECT_EQ(codes(ascending), (QStringList{"f", "a", "c", "d", "e"}));
    TradeBook none = ascending;
    none.applyDayLimit(0, BuyOrder::Descending);
    EXPECT_TRUE(codes(none).isEmpty());
}

TEST(Summary, CountsOrdinarySalesOnlyWithTwoDecimalsRoundedToEvenAndNanAsNan)
{
    TradeBook book;
    book.file(trade("a", "d1", 1, 10, 10));  // a tie is a success, gain 0
    book.file(trade("b", "d1", 1, 8, 8.09)); // gain 1.125
    TradeRow rapid = trade("c", "d2", 1, 10, 20);
    rapid.summaryCount = SummaryCount::Left;
    book.file(rapid);
    const RunSummary summary = RunSummary::fromBook(book);
    EXPECT_EQ(summary.rows, 3);
    EXPECT_EQ(summary.text(),
              QStringLiteral("买卖次数:2\n平均持股天数:2.00\n策略成功率:100.00\n平均收益:0.56\n"));
    EXPECT_EQ(fixedTwoDecimals(1.125), QStringLiteral("1.12"));
    EXPECT_EQ(fixedTwoDecimals(-7.125), QStringLiteral("-7.12"));

    TradeBook onlyRapid;
    onlyRapid.file(rapid);
    EXPECT_EQ(RunSummary::fromBook(onlyRapid).text(),
              QStringLiteral("买卖次数:0\n平均持股天数:0.00\n策略成功率:0.00\n平均收益:0.00\n"));
    EXPECT_EQ(RunSummary::fromBook(TradeBook()).text(), QStringLiteral("无数据"));

    // Bought and sold at a zero price (a data file with zero opens): 0 / 0, whatever its sign.
    TradeBook zero;
    zero.file(trade("a", "d1", 1, 0, 0));
    EXPECT_EQ(RunSummary::fromBook(zero).text(),
              QStringLiteral("买卖次数:1\n平均持股天数:2.00\n策略成功率:100.00\n平均收益:nan\n"));
    EXPECT_EQ(fixedTwoDecimals(-std::nan("")), QStringLiteral("nan"));
}

TEST(Csv, PricesInShortestPrintfFormAndNoHeader)
{
    TradeBook book;
    book.file(trade("600000", "2019-01-02", 1, 10.5, 1234567.0));
    book.file(trade("000001", "2019-01-01", 1, 0.000012, 11.0));
    EXPECT_EQ(outputCsvText(book), QStringLiteral("000001,2019-01-01,1.2e-05,2019-01-01,11,2,卖点\n"
                                                  "600000,2019-01-02,10.5,2019-01-02,1.23457e+06,2,卖点\n"));
    EXPECT_EQ(shortReal(8.090000152587891), QStringLiteral("8.09"));
}

// The file is written a piece at a time; the pieces must join into exactly the
// bytes of the whole book, across days and a non-ASCII code.
TEST(Csv, AFileOfManyPiecesHoldsTheSameBytesAsTheWholeBook)
{
    TradeBook kept;
    for (int i = 0; i < 40000; ++i)
        kept.file(trade(i % 7 ? "600000" : "60000甲", i % 2 ? "2019-01-02" : "2020-03-04", i, 10 + i, 11));
    const QTemporaryDir dir;
    const QString path = dir.filePath("output.csv");
    ASSERT_EQ(writeOutputCsv(path, kept, TextEncoding::Gbk), QString());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray written = file.readAll();
    EXPECT_GT(written.size(), 1 << 20);
    EXPECT_EQ(written, outputCsvBytes(kept, TextEncoding::Gbk));
}

TEST(Csv, PricesPrintAsPrintfWouldOverEveryMagnitudeAndSpecialValue)
{
    const double inf = std::numeric_limits<double>::infinity(), nan = std::nan("");
    std::vector<double> values = {0.0,      -0.0, 1e-5,     9.999995e-5, 1e-4, 0.0001234565, 999999.5,
                                  999999.4, 1e6,  123456.5, 2.5,         0.5,  -3.25,        1e300,
                                  5e-324,   inf,  -inf,     nan,         -nan};
    std::mt19937_64 random(11);
    for (int i = 0; i < 200000; ++i) {
        // Prices as the files give them (floats, cents), then any bits at all.
        const double cents = double(random() % 10000000) / 100;
        values.push_back(double(float(cents)));
        values.push_back(cents * std::pow(10.0, int(random() % 20) - 10));
        // A take-profit's price, and halves exactly between six-digit neighbours.
        values.push_back((64 * 0.01 + 1.0) * double(float(cents)));
        values.push_back(double(random() % 2000000) / double(1 << (random() % 16)));
        const std::uint64_t bits = random();
        double any;
        std::memcpy(&any, &bits, sizeof any);
        values.push_back(any);
    }
    for (const double value : values) {
        char expected[64];
        std::snprintf(expected, sizeof expected, "%g", value);
        ASSERT_EQ(shortReal(value), QString::fromLatin1(expected)) << expected;
    }
}

// Workers file the stocks they were handed into filings of their own; the
// merged filings must give what limiting every trade in file order gives.
TEST(DayLimit, FilingWithTheLimitGivesWhatLimitingAfterwardsGives)
{
    std::mt19937 random(5);
    for (int round = 0; round < 300; ++round) {
        // Small limits keep each day's best only; large ones file the first trades apart.
        const int maxCount = std::array{-1, 0, 1, 2, 3, 65, 90, 200}[random() % 8];
        const BuyOrder order = random() % 2 ? BuyOrder::Descending : BuyOrder::Ascending;
        const int workers = 1 + round % 3;
        TradeBook afterwards;
        std::vector<DayLimitedFiling> asFiled(size_t(workers), DayLimitedFiling(maxCount, order));
        QStringList stocks;
        for (int i = 0; i < 300; ++i) {
            const QByteArray code = QByteArray::number(i);
            stocks << QString::fromLatin1(code);
            const QByteArray date = "d" + QByteArray::number(random() % 3);
            // Few volumes make ties, many an order of their own.
            TradeRow r = trade(code.constData(), date.constData(), double(random() % (round % 2 ? 4 : 1000)));
            r.stock = i;
            afterwards.file(r);
            asFiled[random() % size_t(workers)].file(TradeRecord(r));
        }
        afterwards.applyDayLimit(maxCount, order);
        TradeBook merged = DayLimitedFiling::merge(std::move(asFiled));
        merged.setCodes(stocks);
        ASSERT_EQ(codes(merged), codes(afterwards))
            << maxCount << int(order) << workers;
    }
}
