#include "MetaEvalator_BOLL.h"

#include "indicators/BollIndicator.h"

std::unique_ptr<StockIndicator> MetaEvalator_BOLL::makeIndicator() const
{
    return std::make_unique<BollIndicator>();
}

float MetaEvalator_BOLL::lineOf(const IndicatorValue &r) const
{
    switch (m_line) {
    case 0: return r.value1 + r.value2 - r.value3;
    case 1: return r.value1;
    default: return r.value1 - r.value2 + r.value3;
    }
}
