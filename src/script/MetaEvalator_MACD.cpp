#include "MetaEvalator_MACD.h"

#include "indicators/MacdIndicator.h"

std::unique_ptr<StockIndicator> MetaEvalator_MACD::makeIndicator() const
{
    return std::make_unique<MacdIndicator>();
}
