#include "Indicator_ema.h"

#include "indicators/EMAIndicator.h"

std::unique_ptr<StockIndicator> Indicator_ema::makeIndicator() const
{
    if (m_period <= 0)
        return nullptr;
    return std::make_unique<EMAIndicator>(m_period);
}
