#include "Indicator_VolMa.h"
#include "Indicator_ema.h"
#include "Indicator_ma.h"
#include "MetaEvalator_BOLL.h"
#include "MetaEvalator_DMI.h"
#include "MetaEvalator_KDJ.h"
#include "MetaEvalator_MACD.h"
#include "MetaEvalator_OHLC.h"
#include "MetaEvalutor_Double.h"
#include "MetaEvalutor_K.h"
#include "market/DecimalNumber.h"

std::unique_ptr<MetaEvalutor> createEvaluator(const QString &name)
{
    if (MetaEvalator_OHLC::nameList().contains(name))
        return std::make_unique<MetaEvalator_OHLC>();
    if (MetaEvalator_BOLL::nameList().contains(name))
        return std::make_unique<MetaEvalator_BOLL>();
    if (name == QLatin1String("ma"))
        return std::make_unique<Indicator_ma>();
    if (name == QLatin1String("ema"))
        return std::make_unique<Indicator_ema>();
    if (name == QLatin1String("volma"))
        return std::make_unique<Indicator_VolMa>();
    if (MetaEvalator_MACD::nameList().contains(name))
        return std::make_unique<MetaEvalator_MACD>();
    if (MetaEvalator_KDJ::nameList().contains(name))
        return std::make_unique<MetaEvalator_KDJ>();
    if (MetaEvalator_DMI::nameList().contains(name))
        return std::make_unique<MetaEvalator_DMI>();
    if (name == QLatin1String("value"))
        return std::make_unique<MetaEvalutor_Double>();
    if (name.startsWith(QLatin1String("k.")))
        return std::make_unique<MetaEvalutor_K>();
    return nullptr;
}

QStringList evaluatorKeywordList()
{
    return MetaEvalator_OHLC::nameList() + MetaEvalator_BOLL::nameList() +
           QStringList{QStringLiteral("ma"), QStringLiteral("ema"), QStringLiteral("volma")} +
           MetaEvalator_MACD::nameList() + MetaEvalator_KDJ::nameList() + MetaEvalator_DMI::nameList() +
           QStringList{QStringLiteral("value")};
}

namespace EvaluatorArguments {

QStringList split(const QString &text) { return text.split(QLatin1Char(',')); }

int toInt(const QString &piece) { return DecimalNumber::toInt(QStringView(piece)); }

} // namespace EvaluatorArguments
