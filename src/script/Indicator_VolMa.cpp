#include "Indicator_VolMa.h"

#include "indicators/VolMaNIndicator.h"

std::unique_ptr<StockIndicator> Indicator_VolMa::makeIndicator() const
{
    if (m_period <= 0)
        return nullptr;
    return std::make_unique<VolMaNIndicator>(m_period);
}
