#include "Indicator_ma.h"

#include "indicators/MaNIndicator.h"

std::unique_ptr<StockIndicator> Indicator_ma::makeIndicator() const
{
    if (m_period <= 0)
        return nullptr;
    return std::make_unique<MaNIndicator>(m_period);
}
