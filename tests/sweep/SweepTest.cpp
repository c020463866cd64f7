#include "TestSupport.h"
#include "engine/BacktestRun.h"
#include "engine/OutputCsv.h"
#include "script/ScriptPlaceholders.h"
#include "sweep/SweepRun.h"

#include <gtest/gtest.h>

#include <set>

namespace {

const QString kSampleData = QStringLiteral(ORVEL_SOURCE_DIR "/data");

// Trade settings and statements both vary, so some combinations share their
// conditions and others do not.
const QString kScript = QStringLiteral("config.trade.max.hold.day,$hold\n"
                                       "config.trade.max.profit,$profit\n"
                                       "buy.close,-1<ma,$n,-1\n"
                                       "buy.close,0>ma,$n,0\n"
                                       "sale.close,0<ma,10,0");

SweepGrid grid(std::initializer_list<const char *> axes)
{
    SweepGrid grid;
    for (const char *axis : axes)
        EXPECT_EQ(grid.addAxis(QString::fromUtf8(axis)), QString()) << axis;
    return grid;
}

} // namespace

TEST(Placeholders, OnlyStatementAndConfigLinesAreFilledAndNothingElseMoves)
{
    const QString script = QStringLiteral("# buy.close,0>ma,$n,0 stays a note\r\n"
                                          "/$n\n"
                                          "buy.close,0>ma,$n,0|close,0>ma,$n2,0\r\n"
                                          "sale.vol,0>value,$n$n\n"
                                          "config.trade.max.hold.day,$hold\n"
                                          "other $n\n"
                                          "buy.close,0>$,0");
    EXPECT_EQ(ScriptPlaceholders::names(script), QStringList({"n", "n2", "hold"}));
    const QString filled = ScriptPlaceholders::substitute(script, {{"n", "5"}, {"n2", "10"}, {"hold", "3"}});
    EXPECT_EQ(filled, QStringLiteral("# buy.close,0>ma,$n,0 stays a note\r\n"
                                     "/$n\n"
                                     "buy.close,0>ma,5,0|close,0>ma,10,0\r\n"
                                     "sale.vol,0>value,55\n"
                                     "config.trade.max.hold.day,3\n"
                                     "other $n\n"
                                     "buy.close,0>$,0"));
    EXPECT_EQ(ScriptPlaceholders::substitute(script, {{"n", "5"}}).count(QStringLiteral("$hold")), 1);
}

TEST(Placeholders, AMismatchNamesWhatIsMissingAndWhatIsUnused)
{
    const QString problem = ScriptPlaceholders::mismatch({"n", "hold"}, {"n", "profit"});
    EXPECT_TRUE(problem.contains(QStringLiteral("no values for: $hold"))) << problem.toStdString();
    EXPECT_TRUE(problem.contains(QStringLiteral("not in the script: $profit"))) << problem.toStdString();
    EXPECT_EQ(ScriptPlaceholders::mismatch({"n", "hold"}, {"hold", "n"}), QString());
    EXPECT_TRUE(ScriptPlaceholders::leftoverWarning(QStringLiteral("# $n\nbuy.close,0>open,0")).isEmpty());
}

TEST(SweepGrid, DecimalRangesAreExactAndTheLastNameVariesFastest)
{
    const SweepGrid g = grid({"a=0.1:0.3:0.1", "$b=x,y", "c=-2:2:2.5"});
    EXPECT_EQ(g.names(), QStringList({"a", "b", "c"}));
    ASSERT_EQ(g.size(), 3 * 2 * 2);
    EXPECT_EQ(g.valuesAt(0), QStringList({"0.1", "x", "-2"}));
    EXPECT_EQ(g.valuesAt(1), QStringList({"0.1", "x", "0.5"}));
    EXPECT_EQ(g.valuesAt(2), QStringList({"0.1", "y", "-2"}));
    EXPECT_EQ(g.valuesAt(11), QStringList({"0.3", "y", "0.5"}));
    EXPECT_EQ(grid({"d=1:2:0.25"}).valuesAt(2), QStringList({"1.5"}));
}

TEST(SweepGrid, BadRangesAreRefused)
{
    for (const char *bad : {"n=5:3", "n=1:5:0", "n=1:5:-1", "n=a:5", "n=1:5:x", "n=1:5:1:2", "n=1:", "n=1,,2",
                            "=1:2", "n-1:2", "n 1=1:2"}) {
        SweepGrid g;
        EXPECT_FALSE(g.addAxis(QString::fromUtf8(bad)).isEmpty()) << bad;
    }
    SweepGrid twice = grid({"n=1:2"});
    EXPECT_FALSE(twice.addAxis(QStringLiteral("n=3")).isEmpty());
}

TEST(SweepGrid, ShardsCoverTheGridOnceInOrder)
{
    const SweepGrid g = grid({"a=1:7", "b=1:3"});
    for (int count : {1, 2, 5, 21, 30}) {
        qint64 next = 0;
        for (int shard = 1; shard <= count; ++shard) {
            const auto [first, last] = g.shard(shard, count);
            EXPECT_EQ(first, next);
            EXPECT_LE(first, last);
            next = last;
        }
        EXPECT_EQ(next, g.size()) << count;
    }
}

// The heart of a sweep: one reading of the market for many strategies gives
// each the very trades it gets alone, whatever the threads.
TEST(SweepRun, EveryVariantTradesAsItsOwnBacktest)
{
    const QString config = StrategyConfig::configFileText(QStringLiteral(":/qrc/config.conf"));
    SweepRun sweep(config, kScript, kSampleData, grid({"n=4:6", "hold=2,5", "profit=3,8"}));
    std::vector<BacktestRun::Variant> variants;
    std::vector<QByteArray> alone;
    for (qint64 i = 0; i < sweep.grid().size(); ++i) {
        BacktestRun run(config, sweep.scriptAt(i), kSampleData);
        ASSERT_EQ(run.problem(), BacktestRun::Problem::None);
        run.setJobs(1);
        alone.push_back(outputCsvBytes(run.run(), TextEncoding::Utf8));
        variants.push_back({run.strategy(), int(i / 4)});
    }
    EXPECT_EQ(std::set<QByteArray>(alone.begin(), alone.end()).size(), alone.size());
    for (int jobs : {1, 3}) {
        BacktestRun together(variants);
        together.setJobs(jobs);
        const std::vector<TradeBook> books = together.runAll();
        ASSERT_EQ(books.size(), alone.size());
        for (size_t i = 0; i < books.size(); ++i)
            EXPECT_EQ(outputCsvBytes(books[i], TextEncoding::Utf8), alone[i]) << i << " jobs " << jobs;
    }
}

TEST(SweepRun, TheMarketIsReadOnceAndEachDataFolderOnce)
{
    SweepRun sweep({}, kScript, kSampleData, grid({"n=4:6", "hold=2,5", "profit=3,8"}));
    EXPECT_EQ(sweep.run(0, 12).size(), 12u);
    EXPECT_EQ(sweep.readings(), 1);
    // A placeholder in the data settings needs a reading per folder.
    SweepRun folders({}, QStringLiteral("config.source.k.dir,$dir\nbuy.close,0>ma,$n,0"), {},
                     grid({"n=4:6", "dir=" ORVEL_SOURCE_DIR "/data," ORVEL_SOURCE_DIR "/tests/market"}));
    folders.run(0, 6);
    EXPECT_EQ(folders.readings(), 2) << folders.problemText().toStdString();
}

TEST(SweepRun, ACombinationThatDoesNotCompileIsNamedBeforeAnythingRuns)
{
    SweepRun sweep({}, QStringLiteral("buy.$term,0>open,$day"), kSampleData,
                   grid({"term=close,nosuch", "day=0"}));
    int progressCalls = 0;
    sweep.setProgress([&](int) { ++progressCalls; });
    EXPECT_TRUE(sweep.run(0, 2).empty());
    EXPECT_EQ(sweep.problem(), SweepRun::Problem::CompileError);
    EXPECT_TRUE(sweep.problemText().contains(QStringLiteral("term=nosuch day=0")))
        << sweep.problemText().toStdString();
    EXPECT_EQ(progressCalls, 0);
}

TEST(SweepRun, ACancelledSweepGivesNoHalfResults)
{
    SweepRun sweep({}, kScript, kSampleData, grid({"n=4:6", "hold=2", "profit=3"}));
    sweep.setJobs(2);
    sweep.setProgress([&](int percent) {
        if (percent >= 10)
            sweep.cancel();
    });
    EXPECT_TRUE(sweep.run(0, 3).empty());
    EXPECT_TRUE(sweep.isCancelled());
}
