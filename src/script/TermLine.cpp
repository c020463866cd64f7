#include "TermLine.h"

#include "MetaEvalutor.h"

#include <limits>

std::vector<double> termLine(const QString &term, StockBars bars, IndicatorCache &cache)
{
    std::unique_ptr<MetaEvalutor> evaluator = createEvaluator(term.section(QLatin1Char(','), 0, 0));
    if (!evaluator || !evaluator->parse(term))
        return {};
    evaluator->bind(bars, cache);
    std::vector<double> line(bars.size(), std::numeric_limits<double>::quiet_NaN());
    for (size_t day = 0; day < bars.size(); ++day) {
        EvalValue value;
        if (evaluator->value(int(day), value) == 1 && value.kind == EvalValue::Number)
            line[day] = value.number;
    }
    return line;
}
