#include "ScriptErrorReason.h"

#include "MetaEvalutor.h"
#include "StatementObject.h"
#include "indicators/KPatternTable.h"

#include <QRegularExpression>
#include <QStringList>

namespace {

// The arguments a name takes after it, as the user writes them.
QString argumentForm(const QString &name, qsizetype pieces)
{
    if (name.startsWith(QLatin1String("k.")))
        return QStringLiteral("偏移");
    if (name == QLatin1String("ma") || name == QLatin1String("ema") || name == QLatin1String("volma"))
        return QStringLiteral("周期,偏移");
    if (name.startsWith(QLatin1String("dmi.")))
        return QStringLiteral("周期1,周期2,偏移");
    if (name == QLatin1String("value"))
        return QStringLiteral("数字");
    if (name == QLatin1String("increase") && pieces == 3)
        return QStringLiteral("方式,偏移");
    return QStringLiteral("偏移");
}

QString wrongArgumentCount(const QString &name, qsizetype pieces)
{
    const QString form = argumentForm(name, pieces);
    return QStringLiteral("参数个数不对：“%1”需要%2个参数（%3），这里写了%4个")
        .arg(name)
        .arg(form.count(QLatin1Char(',')) + 1)
        .arg(form)
        .arg(pieces - 1);
}

// Why an operand whose name is known did not read its arguments.
QString argumentReason(const QStringList &pieces)
{
    const QString &name = pieces[0];
    const qsizetype count = pieces.size();
    if (name.startsWith(QLatin1String("k."))) {
        if (count != 2)
            return wrongArgumentCount(name, count);
        if (!KPatternTable::find(name))
            return QStringLiteral("未知的形态名“%1”").arg(name);
        return QStringLiteral("形态的偏移只能是0或负数（-1 指下一天的形态）");
    }
    if (name == QLatin1String("increase") && count == 3)
        return QStringLiteral("increase 的方式只能是1到4");
    if (name.startsWith(QLatin1String("dmi.")) && count == 4)
        return QStringLiteral("dmi 的周期须满足：周期1不小于6，周期2不小于2，且周期1不小于周期2");
    if (name == QLatin1String("value") && count == 2)
        return QStringLiteral("value 后面须是一个数字");
    return wrongArgumentCount(name, count);
}

QString operandReason(const QString &operand)
{
    const QStringList pieces = EvaluatorArguments::split(operand);
    std::unique_ptr<MetaEvalutor> evaluator = createEvaluator(pieces[0]);
    if (!evaluator)
        return pieces[0].isEmpty() ? QStringLiteral("比较运算符的一侧是空的")
                                   : QStringLiteral("未知的指标名“%1”").arg(pieces[0]);
    return evaluator->parse(operand) ? QString() : argumentReason(pieces);
}

// Why one alternative of a statement fails, or empty when it compiles.
QString termReason(const QString &term)
{
    if (StatementObject().parse(term))
        return {};
    if (term.isEmpty())
        return QStringLiteral("“|”的两边都要写条件");
    if (term.startsWith(QLatin1String("tick.")))
        return QStringLiteral("不支持 tick. 条件");
    if (term.contains(QLatin1Char('=')) || term.contains(QLatin1Char('!')))
        return QStringLiteral("不支持的比较运算符：只能用 < 或 >");
    const qsizetype operators = term.count(QLatin1Char('<')) + term.count(QLatin1Char('>'));
    if (operators > 1)
        return QStringLiteral("一个条件只能有一个比较运算符 < 或 >");
    if (operators == 0) {
        if (term.startsWith(QLatin1String("k.")))
            return operandReason(term);
        const QString name = term.section(QLatin1Char(','), 0, 0);
        return createEvaluator(name) ? QStringLiteral("缺少比较运算符 < 或 >")
                                     : QStringLiteral("未知的指标名“%1”，也缺少比较运算符 < 或 >").arg(name);
    }
    const QStringList sides = term.split(QRegularExpression(QStringLiteral("[<>]")));
    for (const QString &side : sides) {
        const QString reason = operandReason(side);
        if (!reason.isEmpty())
            return reason;
    }
    return {};
}

QString statementReason(const QString &line)
{
    const bool buy = line.startsWith(QLatin1String("buy."));
    const QString body = line.mid(buy ? 4 : 5);
    if (body.isEmpty())
        return QStringLiteral("%1 后面缺少条件").arg(buy ? QStringLiteral("buy.") : QStringLiteral("sale."));
    for (const QString &term : body.split(QLatin1Char('|'))) {
        const QString reason = termReason(term);
        if (!reason.isEmpty())
            return reason;
    }
    // Every part reads: the line failed only because no buy line came first.
    if (!buy)
        return QStringLiteral("sale. 卖点写在了第一个 buy. 买点之前");
    return QStringLiteral("无法识别这一行");
}

} // namespace

QString scriptErrorReason(const QString &line)
{
    if (line.isEmpty())
        return QStringLiteral("这一行是空行（脚本末尾多一个换行也会留下一个空行）");
    if (line.startsWith(QLatin1String("config."))) {
        return QStringLiteral("config. 行须写成“键,值”，只有一个逗号，这里有%1个")
            .arg(line.count(QLatin1Char(',')));
    }
    if (line.startsWith(QLatin1String("buy.")) || line.startsWith(QLatin1String("sale.")))
        return statementReason(line);
    if (line.at(0).isSpace())
        return QStringLiteral("行首有空白：行首须是 buy.、sale.、config.、# 或 /");
    return QStringLiteral("无法识别的行：行首须是 buy.、sale.、config.、# 或 /");
}
