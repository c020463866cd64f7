#include "CliRun.h"
#include "TestSupport.h"
#include "indicators/IndicatorCache.h"
#include "market/StockLoader.h"
#include "market/TextFile.h"
#include "script/MetaEvalutor.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <algorithm>
#include <optional>

namespace {

struct LastBar {
    QString code, date;
    double volume = 0;
    bool buys = false;
};

// One operand's value on a day as `orvel-cli eval` computes it: a number, a
// pattern's flag as 1 or 0, nothing where the term has no value.
std::optional<double> valueOn(const QString &term, const StockSeries &series, IndicatorCache &cache, int day)
{
    const std::unique_ptr<MetaEvalutor> evaluator = createEvaluator(term.section(QLatin1Char(','), 0, 0));
    EXPECT_TRUE(evaluator && evaluator->parse(term)) << term.toStdString();
    evaluator->bind(series.view(), cache);
    EvalValue value;
    if (evaluator->value(day, value) != 1)
        return std::nullopt;
    return value.kind == EvalValue::Boolean ? double(value.flag) : value.number;
}

// The buy lines on the file's last bar, term by term: every line must hold,
// through any of its alternatives, each a comparison or a pattern. No value
// when the file is too short to be walked.
std::optional<LastBar> evalLastBar(const QString &file, const QString &script)
{
    StockSeries series;
    StockLoader loader;
    if (!loader.readFile(file, KLineFormat::Default, series) || series.size() <= 6)
        return std::nullopt;
    IndicatorCache cache;
    const int day = series.size() - 1;
    const auto value = [&](const QString &term) { return valueOn(term, series, cache, day); };
    const auto holds = [&](const QString &alternative) {
        const qsizetype at = alternative.indexOf(QRegularExpression(QStringLiteral("[<>]")));
        if (at < 0)
            return value(alternative) == 1.0;
        const std::optional<double> left = value(alternative.left(at)),
                                    right = value(alternative.mid(at + 1));
        return left && right && (alternative[at] == QLatin1Char('>') ? *left > *right : *left < *right);
    };
    LastBar last{QFileInfo(file).fileName(), TextFile::decodeDate(series.bars.back().date),
                 *value(QStringLiteral("vol,0")), true};
    for (const QString &line : script.split(QLatin1Char('\n'))) {
        if (line.startsWith(QLatin1String("buy."))) {
            const QStringList alternatives = line.mid(4).split(QLatin1Char('|'));
            last.buys = last.buys && std::any_of(alternatives.begin(), alternatives.end(), holds);
        }
    }
    return last;
}

// The picks as the screen prints them, worked out bar by bar from eval's values.
QString expectedPicks(const QString &dataDir, const QString &script, bool descending)
{
    std::vector<LastBar> lasts;
    for (const QString &name : QDir(dataDir).entryList(QDir::Files, QDir::Name | QDir::IgnoreCase))
        if (const auto last = evalLastBar(QDir(dataDir).filePath(name), script))
            lasts.push_back(*last);
    QString latest;
    for (const LastBar &last : lasts)
        latest = std::max(latest, last.date);
    std::vector<LastBar> picks;
    std::copy_if(lasts.begin(), lasts.end(), std::back_inserter(picks),
                 [&latest](const LastBar &last) { return last.buys && last.date == latest; });
    std::stable_sort(picks.begin(), picks.end(), [descending](const LastBar &a, const LastBar &b) {
        return descending ? a.volume > b.volume : a.volume < b.volume;
    });
    QString text;
    for (const LastBar &pick : picks)
        text += pick.code + QLatin1Char('\t') + pick.date + QLatin1Char('\n');
    return text;
}

// The sample market as if it had ended on `date`: each file keeps its days up to it.
void writeCutData(const QString &dir, const QString &date)
{
    const QRegularExpression day(QStringLiteral(R"re(\["(\d{4}-\d\d-\d\d)"[^\]]*\])re"));
    for (const QString &name : QDir(kSampleData).entryList(QDir::Files)) {
        const QString text = QString::fromUtf8(readTestFile(QDir(kSampleData).filePath(name)));
        QStringList kept;
        for (const QRegularExpressionMatch &match : day.globalMatch(text))
            if (match.captured(1) <= date)
                kept << match.captured(0);
        writeTestFile(QDir(dir).filePath(name), ("[" + kept.join(QLatin1Char(',')) + "]").toUtf8());
    }
}

const char *const kScripts[] = {
    "buy.close,-1<ma,5,-1\nbuy.close,0>ma,5,0",
    "config.trade.buy.order,asc\nbuy.k.十字星,0|close,0>open,0|k.红三兵,-1\nbuy.vol,0>volma,5,0",
    "buy.macd.bar,0>value,0|kdj.j,0<value,20\nbuy.close,0<boll.upper,0",
};

} // namespace

TEST(Screen, PicksAreTheStocksWhoseBuyLinesHoldOnTheLatestBarAsEvalComputesThem)
{
    if (!QDir(kSampleData).exists())
        GTEST_SKIP() << "no sample data";
    QTemporaryDir dir;
    const QString cut = dir.filePath(QStringLiteral("cut"));
    QDir().mkpath(cut);
    const QString date = QStringLiteral("2022-06-15");
    writeCutData(cut, date);
    int picked = 0;
    for (const char *text : kScripts) {
        const QString script = QString::fromUtf8(text);
        const QString path = writeScript(dir, text);
        const bool descending = !script.contains(QLatin1String("asc"));

        const CliRun today = runCli({"screen", path, "--data", kSampleData}, dir.path());
        ASSERT_EQ(today.exitCode, 0) << today.err.toStdString();
        EXPECT_EQ(today.out, expectedPicks(kSampleData, script, descending)) << text;

        // Indicators see nothing after the date: the same as data that ends there.
        const CliRun before = runCli({"screen", path, "--data", kSampleData, "--date", date}, dir.path());
        ASSERT_EQ(before.exitCode, 0) << before.err.toStdString();
        EXPECT_EQ(before.out, expectedPicks(cut, script, descending)) << text;
        EXPECT_EQ(before.out, runCli({"screen", path, "--data", cut}, dir.path()).out);
        picked += int(today.out.count(QLatin1Char('\n')) + before.out.count(QLatin1Char('\n')));
    }
    EXPECT_GT(picked, 6); // the scripts do pick something
}

TEST(Screen, AStockThatStoppedEarlierIsNoPickAndEqualVolumesKeepFileOrder)
{
    QTemporaryDir dir;
    std::vector<Day> days;
    for (const char *date : {"2024-01-02", "2024-01-03", "2024-01-04", "2024-01-05", "2024-01-08",
                             "2024-01-09", "2024-01-10", "2024-01-11"})
        days.push_back({date, 10, 10.5, 11, 9, 500});
    std::vector<Day> stopped(days.begin(), days.end() - 1);
    days[6].volume = 700;
    days[7].volume = 300;
    stopped[6].volume = 900;
    for (const char *code : {"600003", "600001", "600002"})
        writeTestFile(dir.filePath(QString::fromLatin1(code)), QByteArray::fromStdString(klineText(days)));
    writeTestFile(dir.filePath(QStringLiteral("600000")), QByteArray::fromStdString(klineText(stopped)));
    const QString script = writeScript(dir, "buy.close,0>open,0");
    CliRun run = runCli({"screen", script, "--data", dir.path()}, dir.path());
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, "600001\t2024-01-11\n600002\t2024-01-11\n600003\t2024-01-11\n");

    // Cut at the day the stopped stock ended, every stock ends together; its
    // larger volume comes first, ties stay in file order.
    run = runCli({"screen", script, "--data", dir.path(), "--date", "2024-01-10"}, dir.path());
    EXPECT_EQ(run.out, "600000\t2024-01-10\n600001\t2024-01-10\n600002\t2024-01-10\n600003\t2024-01-10\n");
    // A date that leaves six days or fewer leaves nothing to walk.
    run = runCli({"screen", script, "--data", dir.path(), "--date", "2024-01-08"}, dir.path());
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, "");
}

TEST(Screen, ProblemsEndAsBacktestEndsThem)
{
    QTemporaryDir dir;
    const QString script = writeScript(dir, "buy.close,0>>open,0");
    CliRun run = runCli({"screen", script, "--data", kSampleData}, dir.path());
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(run.err.contains(QStringLiteral("预编译出错: 第:1行有错误"))) << run.err.toStdString();

    writeTestFile(script, "buy.close,0>open,0");
    run = runCli({"screen", script, "--data", dir.filePath("none")}, dir.path());
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_TRUE(
        run.err.contains(QStringLiteral("警告: 文件夹%1不存在或其中缺少股票文件").arg(dir.filePath("none"))));

    EXPECT_EQ(runCli({"screen", script, "--date", "2024-13-01"}, dir.path()).exitCode, 1);
    EXPECT_EQ(runCli({"screen", dir.filePath("missing.script")}, dir.path()).exitCode, 1);
}
