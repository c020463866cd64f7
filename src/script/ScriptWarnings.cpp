#include "ScriptWarnings.h"

#include "MetaEvalutor.h"
#include "StrategyConfig.h"
#include "market/DecimalNumber.h"

#include <QStringList>

namespace {

// A piece of a line and where it starts.
struct Piece {
    QString text;
    int column;
};

// `text` (starting at `column` of its line) split at any of `separators`, empty pieces kept.
std::vector<Piece> splitAt(const QString &text, int column, QStringView separators)
{
    std::vector<Piece> pieces;
    int start = 0;
    for (int i = 0; i <= int(text.size()); ++i) {
        if (i == int(text.size()) || separators.contains(text.at(i))) {
            pieces.push_back({text.mid(start, i - start), column + start});
            start = i + 1;
        }
    }
    return pieces;
}

// True when a number is read from `text` as 0 although the text means something else.
// A `$name` placeholder is a sweep's to fill, not a value.
bool readsAsZero(const QString &text, bool integer)
{
    if (text.startsWith(QLatin1Char('$')))
        return false;
    const std::optional<double> number = DecimalNumber::toDouble(QStringView(text));
    const bool zero = integer ? DecimalNumber::toInt(QStringView(text)) == 0
                              : DecimalNumber::toFloat(QStringView(text)) == 0;
    return zero && (!number || *number != 0);
}

QString notANumberText(const QString &value, bool integer)
{
    return integer ? QStringLiteral("“%1”不是整数，按0计算").arg(value)
                   : QStringLiteral("“%1”不是可用的数字，按0计算").arg(value);
}

// Keys whose value is read as a number.
bool isNumberKey(const QString &key)
{
    static const QStringList keys = {QStringLiteral("config.trade.max.hold.day"),
                                     QStringLiteral("config.trade.min.exclude"),
                                     QStringLiteral("config.trade.max.profit"),
                                     QStringLiteral("config.trade.max.lost"),
                                     QStringLiteral("config.trade.max.count"),
                                     QStringLiteral("config.trade.max.allow.increase"),
                                     QStringLiteral("config.trade.max.allow.decrease"),
                                     QStringLiteral("config.report.capital"),
                                     QStringLiteral("config.report.slots"),
                                     QStringLiteral("config.report.commission"),
                                     QStringLiteral("config.report.commission.min"),
                                     QStringLiteral("config.report.stamp"),
                                     QStringLiteral("config.report.transfer")};
    return keys.contains(key);
}

bool isKnownKey(const QString &line, const QString &key)
{
    // A scratch record answers with the same table the run reads.
    StrategyConfig scratch;
    return scratch.parseConfigLine(line) == 1 || key == QLatin1String("config.source.k.stocks");
}

void configWarnings(const QString &line, int number, std::vector<ScriptWarning> &out)
{
    const qsizetype comma = line.indexOf(QLatin1Char(','));
    const QString key = line.left(comma);
    const QString value = line.mid(comma + 1);
    const int valueColumn = int(comma + 1);
    const int valueLength = std::max(1, int(value.size()));
    if (!isKnownKey(line, key)) {
        out.push_back({ScriptWarning::Kind::UnknownKey, number, 0, int(key.size()),
                       QStringLiteral("未知的配置项“%1”：不设置任何值，但它会让卖出时机（未写 open 时）"
                                      "定为收盘、立即止盈（未写 yes 时）定为否")
                           .arg(key)});
        return;
    }
    if (!isNumberKey(key))
        return;
    // Integer keys read a float first, so "4.7" is a number for them too.
    if (readsAsZero(value, false)) {
        out.push_back({ScriptWarning::Kind::NotANumber, number, valueColumn, valueLength,
                       notANumberText(value, false)});
        return;
    }
    const float read = DecimalNumber::toFloat(QStringView(value));
    if (key == QLatin1String("config.trade.max.lost") && read > 0)
        out.push_back(
            {ScriptWarning::Kind::WrongSign, number, valueColumn, valueLength,
             QStringLiteral("止损是正数：收益不到%1%的每一天都会止损卖出（止损通常写成负数，如 -10）")
                 .arg(value)});
    if (key == QLatin1String("config.trade.max.profit") && read < 0)
        out.push_back(
            {ScriptWarning::Kind::WrongSign, number, valueColumn, valueLength,
             QStringLiteral("止盈是负数：收益高于%1%的每一天都会止盈卖出（止盈通常写成正数，如 10）")
                 .arg(value)});
}

bool hasPeriod(const QString &name)
{
    return name == QLatin1String("ma") || name == QLatin1String("ema") || name == QLatin1String("volma");
}

// The integer arguments of one operand; "value" reads a real number and
// fails to compile when it is not one.
void operandWarnings(const Piece &operand, int number, std::vector<ScriptWarning> &out)
{
    const std::vector<Piece> pieces = splitAt(operand.text, operand.column, u",");
    const QString &name = pieces[0].text;
    std::unique_ptr<MetaEvalutor> evaluator = createEvaluator(name);
    if (!evaluator || !evaluator->parse(operand.text) || name == QLatin1String("value"))
        return;
    for (size_t i = 1; i < pieces.size(); ++i) {
        const Piece &piece = pieces[i];
        const int length = std::max(1, int(piece.text.size()));
        if (readsAsZero(piece.text, true))
            out.push_back({ScriptWarning::Kind::NotANumber, number, piece.column, length,
                           notANumberText(piece.text, true)});
        if (i == 1 && hasPeriod(name) && !piece.text.startsWith(QLatin1Char('$')) &&
            DecimalNumber::toInt(QStringView(piece.text)) <= 0)
            out.push_back({ScriptWarning::Kind::NeverValued, number, piece.column, length,
                           QStringLiteral("周期不大于0：“%1”在任何一天都没有值，这个条件永远不成立")
                               .arg(operand.text)});
    }
}

void statementWarnings(const QString &line, int number, std::vector<ScriptWarning> &out)
{
    const int start = line.startsWith(QLatin1String("buy.")) ? 4 : 5;
    for (const Piece &term : splitAt(line.mid(start), start, u"|")) {
        const std::vector<Piece> sides = splitAt(term.text, term.column, u"<>");
        // A boolean term is one operand; a comparison compiles only with two.
        if (sides.size() <= 2) {
            for (const Piece &side : sides)
                operandWarnings(side, number, out);
        }
    }
}

} // namespace

std::vector<ScriptWarning> findScriptWarnings(const QString &text)
{
    std::vector<ScriptWarning> warnings;
    int number = 0;
    for (const QString &line : splitScriptLines(text)) {
        ++number;
        if (line.startsWith(QLatin1String("config.")) && line.count(QLatin1Char(',')) == 1)
            configWarnings(line, number, warnings);
        else if (line.startsWith(QLatin1String("buy.")) || line.startsWith(QLatin1String("sale.")))
            statementWarnings(line, number, warnings);
    }
    return warnings;
}

QString warningLine(const QString &fileName, const ScriptWarning &warning)
{
    return QStringLiteral("提示: %1 第%2行: %3").arg(fileName).arg(warning.line).arg(warning.text);
}
