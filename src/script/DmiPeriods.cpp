#include "DmiPeriods.h"

#include "MetaEvalutor.h"

#include <QRegularExpression>

DmiPeriods DmiPeriods::ofScript(const QString &scriptText)
{
    static const QRegularExpression dmiTerm(QStringLiteral("dmi\\.(?:pdi|mdi|adxr|adx),([^,]*),([^,]*),"));
    for (const QString &line : scriptText.split(QLatin1Char('\n'))) {
        // Only statements hold terms; comments may mention any.
        if (!line.startsWith(QLatin1String("buy.")) && !line.startsWith(QLatin1String("sale.")))
            continue;
        for (auto match = dmiTerm.globalMatch(line); match.hasNext();) {
            const QRegularExpressionMatch term = match.next();
            // Periods the evaluator refuses would never have compiled.
            const QString probe = QStringLiteral("dmi.pdi,%1,%2,0").arg(term.captured(1), term.captured(2));
            if (createEvaluator(QStringLiteral("dmi.pdi"))->parse(probe))
                return {EvaluatorArguments::toInt(term.captured(1)),
                        EvaluatorArguments::toInt(term.captured(2))};
        }
    }
    return {};
}
