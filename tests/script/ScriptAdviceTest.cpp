#include "TestSupport.h"
#include "script/CompiledStrategy.h"
#include "script/ScriptWarnings.h"

#include <gtest/gtest.h>

namespace {

// Why `script` failed to compile, "line: reason".
QString failure(const QString &script)
{
    const CompileResult result = CompiledStrategy::compile(StrategyConfig(), script);
    return QStringLiteral("%1: %2").arg(result.line).arg(result.reason);
}

// The warnings of `text`, "line:column:length kind-number", one per entry.
QStringList warnings(const QString &text)
{
    QStringList seen;
    for (const ScriptWarning &warning : findScriptWarnings(text))
        seen << QStringLiteral("%1:%2:%3 %4")
                    .arg(warning.line)
                    .arg(warning.column)
                    .arg(warning.length)
                    .arg(int(warning.kind));
    return seen;
}

const QString kBuy = QStringLiteral("buy.close,0>open,0\n");

} // namespace

// The line number comes from the compiler, the reason from a second reading of
// the line: both must point at the same place.
TEST(CompileErrors, SayWhyTheLineFailed)
{
    const std::pair<const char *, const char *> cases[] = {
        {"buy.foo,0>open,0", "未知的指标名“foo”"},
        {"buy.Close,0>open,0", "未知的指标名“Close”"},
        {"buy.ma,5>open,0", "“ma”需要2个参数（周期,偏移），这里写了1个"},
        {"buy.close,0,1<open,0", "这里写了2个"},
        {"buy.close,0", "缺少比较运算符"},
        {"buy.close,0>=open,0", "只能用 < 或 >"},
        {"buy.close,0=open,0", "比较运算符"},
        {"buy.close,0>open,0<high,0", "只能有一个"},
        {"buy.k.旭日东升,0|k.不存在,0", "未知的形态名“k.不存在”"},
        {"buy.k.旭日东升,1", "0或负数"},
        {"buy.increase,0,0>value,1", "1到4"},
        {"buy.dmi.adx,5,2,0>value,1", "周期1不小于6"},
        {"buy.close,0>value,abc", "数字"},
        {"buy.close,0>open,0||high,0>low,0", "“|”"},
        {"buy.close,0>open,0|", "“|”"},
        {"buy.tick.x", "tick."},
        {"buy.", "缺少条件"},
        {"config.source.k.dir,d:,data", "这里有2个"},
        {" buy.close,0>open,0", "行首有空白"},
        {"Buy.close,0>open,0", "无法识别的行"},
    };
    for (const auto &[line, reason] : cases) {
        const QString told = failure(kBuy + QString::fromUtf8(line));
        EXPECT_TRUE(told.startsWith(QStringLiteral("2: ")) && told.contains(QString::fromUtf8(reason)))
            << line << " -> " << told.toStdString();
    }
}

TEST(CompileErrors, NameTheTrailingLineBreakAndTheSaleBeforeAnyBuy)
{
    EXPECT_TRUE(failure(kBuy).startsWith(QStringLiteral("2: 这一行是空行（脚本末尾多一个换行")));
    EXPECT_EQ(failure(QStringLiteral("sale.close,0<ma,10,0\n") + kBuy),
              QStringLiteral("1: sale. 卖点写在了第一个 buy. 买点之前"));
    // A sale line that is itself wrong is reported for what is wrong in it.
    EXPECT_TRUE(failure(QStringLiteral("sale.close,0<mb,10,0\n") + kBuy).contains(QStringLiteral("“mb”")));
}

TEST(Warnings, ValuesThatReadAsZeroAreMarkedWhereTheyStand)
{
    EXPECT_EQ(warnings(QStringLiteral("config.trade.max.hold.day,abc")), QStringList{"1:26:3 0"});
    EXPECT_EQ(warnings(QStringLiteral("config.trade.max.profit,1e400")), QStringList{"1:24:5 0"});
    EXPECT_EQ(warnings(QStringLiteral("config.report.capital,x")), QStringList{"1:22:1 0"});
    // Numbers that are numbers, even when they truncate or are 0, are not warned about.
    EXPECT_TRUE(warnings(QStringLiteral("config.trade.max.hold.day,4.7\nconfig.trade.max.count,0\n"
                                        "config.trade.max.allow.decrease, -3.6\nbuy.close,-1<ma,5,-1"))
                    .isEmpty());
    // ma's period "abc" reads 0, and a period of 0 never has a value; the offset "x" reads 0.
    EXPECT_EQ(warnings(QStringLiteral("buy.close,0>open,0|ma,abc,x<close,0")),
              (QStringList{"1:22:3 0", "1:22:3 3", "1:26:1 0"}));
    EXPECT_EQ(warnings(QStringLiteral("buy.close,0>ema,-3,0")), QStringList{"1:16:2 3"});
    // A sweep's placeholders are filled before the run.
    EXPECT_TRUE(warnings(QStringLiteral("config.trade.max.hold.day,$hold\nbuy.close,0>ma,$n,0")).isEmpty());
    // Lines that do not compile are left to the compile error.
    EXPECT_TRUE(warnings(QStringLiteral("buy.close,0>value,abc\nconfig.trade.max.count,a,b")).isEmpty());
}

TEST(Warnings, SignsAndUnknownKeysAreNamed)
{
    EXPECT_EQ(warnings(QStringLiteral("config.trade.max.lost,5\nconfig.trade.max.profit,-1\n"
                                      "config.trade.max.lost,-5\nconfig.trade.max.profit,0")),
              (QStringList{"1:22:1 1", "2:24:2 1"}));
    EXPECT_EQ(warnings(QStringLiteral("config.source.ticket.dir,tick\nconfig.trade.maxhold,3")),
              (QStringList{"1:0:24 2", "2:0:20 2"}));
    const std::vector<ScriptWarning> unknown = findScriptWarnings(QStringLiteral("config.x,1"));
    ASSERT_EQ(unknown.size(), 1u);
    EXPECT_TRUE(unknown[0].text.contains(QStringLiteral("卖出时机")));
    // Keys added to the record are known, whatever their value.
    EXPECT_TRUE(
        warnings(QStringLiteral("config.report.stamp,0.05\nconfig.trade.t1,yes\nconfig.trade.limit,yes\n"
                                "config.trade.limit.st,600001\nconfig.trade.stop.intraday,yes\n"
                                "config.source.k.stocks,all\n# config.x,1"))
            .isEmpty());
}
