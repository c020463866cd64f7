#include "ReportMarket.h"

#include "engine/TradeDate.h"
#include "market/TextFile.h"

#include <algorithm>

int ReportCalendar::indexFrom(int day, const QString &date) const
{
    if (day >= 0 && size_t(day) < indexOfDay.size() && indexOfDay[size_t(day)] >= 0)
        return indexOfDay[size_t(day)];
    return int(std::lower_bound(dates.begin(), dates.end(), date) - dates.begin());
}

ReportMarket::ReportMarket(ReportMarket &&other) noexcept
{
    const std::lock_guard lock(other.m_mutex);
    m_stocks = std::move(other.m_stocks);
    m_otherDays = std::move(other.m_otherDays);
    m_otherTexts = std::move(other.m_otherTexts);
}

uint32_t ReportMarket::internDay(std::string_view date)
{
    const int slot = TradeDate::slotOf(date);
    if (slot >= 0)
        return uint32_t(slot);
    const QString text = TextFile::decodeDate(date);
    const std::lock_guard lock(m_mutex);
    const auto found = m_otherDays.constFind(text);
    if (found != m_otherDays.cend())
        return *found;
    const uint32_t day = uint32_t(TradeDate::kSlots + m_otherTexts.size());
    m_otherDays.insert(text, day);
    m_otherTexts.push_back(text);
    return day;
}

int ReportMarket::dayOf(const QString &date) const
{
    const int slot = TradeDate::slotOf(date);
    if (slot >= 0)
        return slot;
    const std::lock_guard lock(m_mutex);
    return int(m_otherDays.value(date, uint32_t(-1)));
}

QString ReportMarket::textOfDay(uint32_t day) const
{
    if (day >= uint32_t(TradeDate::kSlots))
        return m_otherTexts[day - TradeDate::kSlots];
    const int month = int(day) / 31;
    return QStringLiteral("%1-%2-%3")
        .arg(TradeDate::kFirstYear + month / 12)
        .arg(month % 12 + 1, 2, 10, QLatin1Char('0'))
        .arg(int(day) % 31 + 1, 2, 10, QLatin1Char('0'));
}

void ReportMarket::addStock(int order, const QString &code, StockBars bars)
{
    Closes stock;
    stock.order = order;
    stock.code = code;
    stock.days.reserve(bars.size());
    stock.closes.reserve(bars.size());
    for (const Stock &bar : bars) {
        stock.days.push_back(internDay(bar.date));
        stock.closes.push_back(bar.close);
    }
    const std::lock_guard lock(m_mutex);
    m_stocks.push_back(std::move(stock));
}

std::vector<const ReportMarket::Closes *> ReportMarket::stocks() const
{
    const std::lock_guard lock(m_mutex);
    std::vector<const Closes *> ordered;
    for (const Closes &stock : m_stocks)
        ordered.push_back(&stock);
    std::stable_sort(ordered.begin(), ordered.end(),
                     [](const Closes *a, const Closes *b) { return a->order < b->order; });
    return ordered;
}

size_t ReportMarket::dayCount() const
{
    const std::lock_guard lock(m_mutex);
    return size_t(TradeDate::kSlots) + m_otherTexts.size();
}

bool ReportMarket::daysInDateOrder() const
{
    const std::lock_guard lock(m_mutex);
    return m_otherTexts.empty();
}

ReportCalendar ReportMarket::calendar() const
{
    std::vector<char> present(dayCount(), 0);
    for (const Closes *stock : stocks()) {
        for (uint32_t day : stock->days)
            present[day] = 1;
    }
    return calendarOf(present);
}

ReportCalendar ReportMarket::calendarOf(const std::vector<char> &present) const
{
    const std::lock_guard lock(m_mutex);
    // Dates order as texts; the usual form already does in day-number order.
    std::vector<std::pair<QString, uint32_t>> texts;
    for (size_t day = 0; day < present.size(); ++day) {
        if (present[day])
            texts.emplace_back(textOfDay(uint32_t(day)), uint32_t(day));
    }
    if (!m_otherTexts.empty())
        std::sort(texts.begin(), texts.end());
    ReportCalendar calendar;
    calendar.indexOfDay.assign(present.size(), -1);
    for (const auto &[text, day] : texts) {
        calendar.indexOfDay[day] = calendar.size();
        calendar.dates.push_back(text);
    }
    return calendar;
}
