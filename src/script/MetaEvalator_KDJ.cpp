#include "MetaEvalator_KDJ.h"

#include "indicators/KDJIndicator.h"

std::unique_ptr<StockIndicator> MetaEvalator_KDJ::makeIndicator() const
{
    return std::make_unique<KDJIndicator>();
}
