#include "RunNotes.h"

#include <QDir>

namespace RunNotes {
namespace {

QString number(float value) { return QString::number(double(value)); }

// The reasons files were skipped, "3个不超过6天、1个无法读取".
QString skippedFiles(const StockSkipCounts &files)
{
    QStringList parts;
    for (size_t i = 1; i < StockSkipCounts::kOutcomes; ++i) {
        const auto skip = StockSkip(i);
        if (files.count(skip) > 0)
            parts << QStringLiteral("%1个%2")
                         .arg(files.count(skip))
                         .arg(stockSkipText(skip).section(QStringLiteral(" / "), 0, 0));
    }
    return parts.join(QStringLiteral("、"));
}

} // namespace

QString effectiveSettings(const StrategyConfig &config, const RunCounts &counts)
{
    // Only "close" sells at the close; anything else, unset included, at the next open.
    const bool atClose = config.salePoint == SalePoint::Close;
    return QStringLiteral("本次运行: 数据 %1（读取%2只股票） | 卖出时机 %3 | 立即止盈 %4 | 最长持股 %5天 | "
                          "止盈 %6% | 止损 %7% | 每日最多买入 %8")
        .arg(QDir::toNativeSeparators(QDir(config.kDir).absolutePath()))
        .arg(counts.files.read())
        .arg(atClose ? QStringLiteral("收盘") : QStringLiteral("次日开盘"))
        .arg(config.saleRapid == RapidSale::Yes ? QStringLiteral("是") : QStringLiteral("否"))
        .arg(config.maxHoldDay)
        .arg(number(config.maxProfit), number(config.maxLost))
        .arg(config.maxCount);
}

QString noDataReason(const StrategyConfig &config, const RunCounts &counts)
{
    if (counts.files.read() == 0)
        return QStringLiteral("没有读到任何股票：%1").arg(skippedFiles(counts.files));
    if (counts.buySignals == 0)
        return QStringLiteral("%1只股票里，买点条件在任何一天都不成立").arg(counts.files.read());
    if (counts.outsideGap == counts.buySignals)
        return QStringLiteral("%1次买点信号都因次日开盘涨跌幅超出允许范围（%2%～%3%）而没有买入")
            .arg(counts.buySignals)
            .arg(number(config.maxAllowDecrease), number(config.maxAllowIncrease));
    if (config.maxCount <= 0)
        return QStringLiteral("每日最多买入为%1，没有一笔买入").arg(config.maxCount);
    return {};
}

} // namespace RunNotes
