#include "ReportHtml.h"

#include <map>

namespace {

const QString kCell = QStringLiteral("padding:3px 10px;border-bottom:1px solid #ddd;text-align:right");
const QString kHead = QStringLiteral("padding:3px 10px;border-bottom:2px solid #999;text-align:right;"
                                     "background:#f4f4f4");

// Chinese traders read red as a gain and green as a loss.
QString signColour(const Figure &value)
{
    if (!value || *value == 0)
        return QStringLiteral("#333");
    return *value > 0 ? QStringLiteral("#c8102e") : QStringLiteral("#15803d");
}

QString heatCell(const Figure &value)
{
    QString background = QStringLiteral("#fff");
    if (value && *value != 0) {
        const double strength = std::min(std::abs(*value) / 10.0, 1.0) * 0.55 + 0.08;
        background = QStringLiteral("rgba(%1,%2)")
                         .arg(*value > 0 ? QStringLiteral("200,16,46") : QStringLiteral("21,128,61"))
                         .arg(strength, 0, 'f', 2);
    }
    return QStringLiteral("<td style=\"%1;background:%2\">%3</td>")
        .arg(kCell, background, reportPercent(value));
}

QString cell(const QString &text, const QString &colour = QStringLiteral("#333"))
{
    return QStringLiteral("<td style=\"%1;color:%2\">%3</td>").arg(kCell, colour, text.toHtmlEscaped());
}

QString signedCell(const Figure &value) { return cell(reportPercent(value), signColour(value)); }

QString headRow(const QStringList &names)
{
    QString row = QStringLiteral("<tr>");
    for (const QString &name : names)
        row += QStringLiteral("<th style=\"%1\">%2</th>").arg(kHead, name);
    return row + QStringLiteral("</tr>");
}

QString table(const QString &head, const QString &rows)
{
    return QStringLiteral("<table style=\"border-collapse:collapse;margin:8px 0 18px\">%1%2</table>")
        .arg(head, rows);
}

QString section(const QString &title)
{
    return QStringLiteral("<h2 style=\"font-size:18px;margin:24px 0 6px\">%1</h2>").arg(title);
}

QString picture(const QByteArray &png, const QString &alt)
{
    if (png.isEmpty())
        return {};
    return QStringLiteral("<img alt=\"%1\" style=\"max-width:100%\" src=\"data:image/png;base64,%2\">")
        .arg(alt, QString::fromLatin1(png.toBase64()));
}

// Label and value pairs, four to a row.
QString figureGrid(const std::vector<std::pair<QString, QString>> &figures)
{
    QString rows;
    for (size_t i = 0; i < figures.size(); i += 4) {
        rows += QStringLiteral("<tr>");
        for (size_t j = i; j < std::min(i + 4, figures.size()); ++j)
            rows += QStringLiteral("<td style=\"padding:4px 10px;color:#666\">%1</td>"
                                   "<td style=\"padding:4px 18px 4px 4px;font-weight:bold\">%2</td>")
                        .arg(figures[j].first, figures[j].second.toHtmlEscaped());
        rows += QStringLiteral("</tr>");
    }
    return table({}, rows);
}

QString dateOrNone(const QString &date, const QString &none) { return date.isEmpty() ? none : date; }

} // namespace

std::vector<std::pair<QString, QString>> keyFigureTexts(const StrategyReport &r)
{
    const TradeFigures &t = r.trades;
    const AccountFigures &a = r.account;
    const MarketFigures &m = r.market;
    return {
        {QStringLiteral("总收益率"), reportPercent(a.totalReturn)},
        {QStringLiteral("年化收益率"), reportPercent(a.annualReturn)},
        {QStringLiteral("最大回撤"), reportPercent(a.maxDrawdown)},
        {QStringLiteral("超额收益"), reportPercent(m.excessReturn)},
        {QStringLiteral("最终权益"), reportNumber(a.finalEquity)},
        {QStringLiteral("夏普比率"), reportNumber(a.sharpe)},
        {QStringLiteral("索提诺比率"), reportNumber(a.sortino)},
        {QStringLiteral("卡玛比率"), reportNumber(a.calmar)},
        {QStringLiteral("年化波动率"), reportPercent(a.volatility)},
        {QStringLiteral("持仓时间占比"), reportPercent(a.exposure)},
        {QStringLiteral("交易费用"), reportNumber(a.costs)},
        {QStringLiteral("未能买入"), QString::number(a.skippedBuys)},
        {QStringLiteral("回撤开始"), dateOrNone(a.maxDrawdownPeak, QStringLiteral("—"))},
        {QStringLiteral("回撤最低"), dateOrNone(a.maxDrawdownTrough, QStringLiteral("—"))},
        {QStringLiteral("回撤恢复"), dateOrNone(a.maxDrawdownRecovery, QStringLiteral("未恢复"))},
        {QStringLiteral("最长水下天数"), QString::number(a.longestUnderwaterDays)},
        {QStringLiteral("交易次数"), QString::number(t.count)},
        {QStringLiteral("汇总框次数"), QString::number(t.summaryCount)},
        {QStringLiteral("胜率"), reportPercent(t.winRate)},
        {QStringLiteral("平均收益"), reportPercent(t.averageReturn)},
        {QStringLiteral("收益中位数"), reportPercent(t.medianReturn)},
        {QStringLiteral("平均盈利"), reportPercent(t.averageWin)},
        {QStringLiteral("平均亏损"), reportPercent(t.averageLoss)},
        {QStringLiteral("盈亏比"), reportNumber(t.payoffRatio)},
        {QStringLiteral("盈利因子"), reportNumber(t.profitFactor)},
        {QStringLiteral("最好一笔"), reportPercent(t.best)},
        {QStringLiteral("最差一笔"), reportPercent(t.worst)},
        {QStringLiteral("最长连胜/连亏"), QStringLiteral("%1 / %2").arg(t.maxWinStreak).arg(t.maxLossStreak)},
        {QStringLiteral("平均持股天数"), reportNumber(t.averageHoldDays)},
        {QStringLiteral("持股天数中位数"), reportNumber(t.medianHoldDays)},
        {QStringLiteral("市场总收益率"), reportPercent(m.totalReturn)},
        {QStringLiteral("市场最大回撤"), reportPercent(m.maxDrawdown)},
    };
}

namespace {

QString yearTable(const StrategyReport &r)
{
    QString rows;
    for (const YearFigures &y : r.byYear)
        rows += QStringLiteral("<tr>") + cell(y.year) + cell(QString::number(y.count)) +
                cell(reportPercent(y.winRate)) + signedCell(y.averageReturn) + signedCell(y.accountReturn) +
                signedCell(y.marketReturn) + QStringLiteral("</tr>");
    return table(
        headRow({QStringLiteral("年份"), QStringLiteral("交易次数"), QStringLiteral("胜率"),
                 QStringLiteral("平均收益"), QStringLiteral("账户收益"), QStringLiteral("市场收益")}),
        rows);
}

// Years down, months across: the account's return of each month.
QString monthTable(const StrategyReport &r)
{
    std::map<QString, std::map<int, Figure>> years;
    for (const MonthFigures &m : r.monthly)
        years[m.month.left(4)][m.month.mid(5, 2).toInt()] = m.accountReturn;
    QStringList head{QStringLiteral("年份")};
    for (int month = 1; month <= 12; ++month)
        head << QStringLiteral("%1月").arg(month);
    QString rows;
    for (const auto &[year, months] : years) {
        rows += QStringLiteral("<tr>") + cell(year);
        for (int month = 1; month <= 12; ++month) {
            const auto found = months.find(month);
            rows += found == months.end() ? cell(QString()) : heatCell(found->second);
        }
        rows += QStringLiteral("</tr>");
    }
    return table(headRow(head), rows);
}

QString exitTable(const StrategyReport &r)
{
    QString rows;
    for (const ExitFigures &e : r.byExit)
        rows += QStringLiteral("<tr>") + cell(tradeExitText(e.exit)) + cell(QString::number(e.count)) +
                cell(reportPercent(e.winRate)) + signedCell(e.averageReturn) + QStringLiteral("</tr>");
    return table(headRow({QStringLiteral("卖出类型"), QStringLiteral("次数"), QStringLiteral("胜率"),
                          QStringLiteral("平均收益")}),
                 rows);
}

QString rulesTable(const RuleEffects &e)
{
    QString rows;
    const std::pair<QString, int> lines[] = {{QStringLiteral("T+1 推迟卖出"), e.t1Delayed},
                                             {QStringLiteral("涨停未买入"), e.limitUpNotBought},
                                             {QStringLiteral("跌停未卖出"), e.limitDownNotSold},
                                             {QStringLiteral("盘中止损"), e.stopIntraday}};
    for (const auto &[name, count] : lines)
        rows += QStringLiteral("<tr>") + cell(name) + cell(QString::number(count)) + QStringLiteral("</tr>");
    return table(headRow({QStringLiteral("实盘规则"), QStringLiteral("笔数")}), rows);
}

QString histogramTable(const StrategyReport &r)
{
    QString rows;
    for (const HistogramBin &bin : r.histogram)
        rows += QStringLiteral("<tr>") + cell(QStringLiteral("%1% ~ %2%").arg(bin.from).arg(bin.from + 1)) +
                cell(QString::number(bin.count)) + QStringLiteral("</tr>");
    return table(headRow({QStringLiteral("收益区间"), QStringLiteral("次数")}), rows);
}

QString settingsText(const ReportSettings &s)
{
    return QStringLiteral(
               "<p style=\"color:#555;line-height:1.6\">初始资金 %1 元，最多同时持有 %2 只股票；"
               "佣金 %3%（每笔最低 %4 元），印花税 %5%（仅卖出），过户费 %6%。"
               "每个交易日先卖出此前买入的持仓，再按交易列表顺序买入（每笔最多用前一日收盘权益的 1/%2，"
               "且不超过现金，按 100 "
               "股整数倍买入，买不起或仓位已满则跳过该笔交易），再卖出当日买入当日卖出的交易，"
               "最后按收盘价（停牌股票按最近收盘价）计算权益。市场为所有回测股票的等权指数。</p>")
        .arg(reportNumber(s.capital))
        .arg(s.slotCount)
        .arg(s.commission)
        .arg(s.commissionMin)
        .arg(s.stamp)
        .arg(s.transfer);
}

} // namespace

QString reportNumber(const Figure &value)
{
    return value ? QString::number(*value, 'f', 2) : QStringLiteral("—");
}

QString reportPercent(const Figure &value)
{
    return value ? QString::number(*value, 'f', 2) + QLatin1Char('%') : QStringLiteral("—");
}

QString reportHtml(const StrategyReport &r, const ReportCharts &charts)
{
    QString body = QStringLiteral("<h1 style=\"font-size:24px;margin:0 0 4px\">策略回测报告</h1>");
    if (!r.daily.empty())
        body += QStringLiteral("<p style=\"color:#666;margin:0\">%1 至 %2，共 %3 个交易日</p>")
                    .arg(r.daily.front().date, r.daily.back().date)
                    .arg(r.daily.size());
    if (r.trades.count == 0)
        body += QStringLiteral("<p style=\"font-size:16px;color:#c8102e\">本次回测没有已完成的交易，"
                               "账户始终持有现金；下面仍列出市场的表现。</p>");
    body += QStringLiteral(
        "<p style=\"color:#666\">胜率只计收益大于 0 的交易（汇总框的策略成功率把卖价等于买价也算作成功）；"
        "汇总框的买卖次数不含立即止盈的交易，这里的交易次数含。</p>");
    body += figureGrid(keyFigureTexts(r));
    body += section(QStringLiteral("账户与市场")) + picture(charts.account, QStringLiteral("账户与市场曲线"));
    body += section(QStringLiteral("年度收益")) + yearTable(r);
    body += section(QStringLiteral("月度收益")) + monthTable(r);
    body += section(QStringLiteral("卖出类型")) + exitTable(r);
    if (r.rules)
        body += section(QStringLiteral("实盘规则影响")) + rulesTable(*r.rules);
    body += section(QStringLiteral("收益分布"));
    body += charts.histogram.isEmpty() ? histogramTable(r)
                                       : picture(charts.histogram, QStringLiteral("收益分布"));
    body += section(QStringLiteral("账户设置")) + settingsText(r.settings);
    return QStringLiteral("<!DOCTYPE html>\n<html lang=\"zh-CN\"><head><meta charset=\"utf-8\">"
                          "<title>策略回测报告</title></head>"
                          "<body style=\"font-family:'Microsoft YaHei','WenQuanYi Micro Hei','Noto Sans CJK "
                          "SC',sans-serif;"
                          "color:#222;margin:24px auto;max-width:1000px;padding:0 16px\">%1</body></html>\n")
        .arg(body);
}
