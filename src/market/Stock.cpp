#include "Stock.h"

char *StockSeries::textBuffer(size_t size)
{
    if (size > m_textCapacity) {
        m_text = std::make_unique_for_overwrite<char[]>(size);
        m_textCapacity = size;
    }
    return m_text.get();
}
