#include "CliOutput.h"
#include "Commands.h"
#include "indicators/IndicatorCache.h"
#include "market/StockLoader.h"
#include "market/TextFile.h"
#include "script/MetaEvalutor.h"

#include <QFileInfo>

#include <memory>
#include <vector>

namespace {

using EvaluatorList = std::vector<std::unique_ptr<MetaEvalutor>>;

// Compiles every term, or names the first that does not compile.
bool compileTerms(const QStringList &terms, EvaluatorList &evaluators, QString &failed)
{
    for (const QString &term : terms) {
        std::unique_ptr<MetaEvalutor> evaluator = createEvaluator(term.section(QLatin1Char(','), 0, 0));
        if (!evaluator || !evaluator->parse(term)) {
            failed = term;
            return false;
        }
        evaluators.push_back(std::move(evaluator));
    }
    return true;
}

QString valueText(const MetaEvalutor &evaluator, int dayIndex)
{
    EvalValue value;
    if (evaluator.value(dayIndex, value) != 1)
        return QStringLiteral("NA");
    if (value.kind == EvalValue::Boolean)
        return value.flag ? QStringLiteral("true") : QStringLiteral("false");
    return shortestReal(value.number);
}

} // namespace

namespace Commands {

// One line per bar: index, date, then every term's value on that day.
int eval(const QStringList &arguments)
{
    if (arguments.size() < 3) {
        CliOutput::err(QStringLiteral("用法 / usage: orvel-cli eval KLINEFILE TERM [TERM...]\n"));
        return UsageError;
    }
    EvaluatorList evaluators;
    QString failed;
    if (!compileTerms(arguments.mid(2), evaluators, failed)) {
        CliOutput::err(QStringLiteral("parse error: %1\n").arg(failed));
        return CompileError;
    }
    // A ".day" or ".csv" file is read as such, anything else as K-line text.
    const QString suffix = QFileInfo(arguments[1]).suffix().toLower();
    KLineSource source;
    if (suffix == QLatin1String("day"))
        source.format = QStringLiteral("tdx");
    else if (suffix == QLatin1String("csv"))
        source.format = QStringLiteral("csv");
    StockSeries series;
    StockLoader loader;
    if (!loader.readFile(arguments[1], source.kind(), series)) {
        CliOutput::err(QStringLiteral("无法读取 / cannot read: %1\n").arg(arguments[1]));
        return UsageError;
    }
    series.code = source.codeOf(arguments[1]);
    IndicatorCache indicators;
    for (const std::unique_ptr<MetaEvalutor> &evaluator : evaluators)
        evaluator->bind(series.view(), indicators);
    QString text;
    for (int day = 0; day < series.size(); ++day) {
        text +=
            QString::number(day) + QLatin1Char('\t') + TextFile::decodeDate(series.bars[size_t(day)].date);
        for (const std::unique_ptr<MetaEvalutor> &evaluator : evaluators)
            text += QLatin1Char('\t') + valueText(*evaluator, day);
        text += QLatin1Char('\n');
    }
    CliOutput::out(text);
    return Ok;
}

} // namespace Commands
