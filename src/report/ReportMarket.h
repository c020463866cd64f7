#pragma once

#include "market/Stock.h"

#include <QHash>
#include <QString>

#include <cstdint>
#include <mutex>
#include <vector>

// The sorted dates of every stock a run simulated, and each date's place.
struct ReportCalendar {
    std::vector<QString> dates;
    std::vector<int> indexOfDay; // day number (see ReportMarket) -> index in `dates`, or -1

    int size() const { return int(dates.size()); }
    // The index of the date, or of the first later one; size() when none.
    int indexFrom(int day, const QString &date) const;
};

// The closes of every stock a run simulated, kept while the run walks them so
// that no file is read twice. A day is a small number: "yyyy-MM-dd" dates map
// onto a fixed table, other texts are numbered as they come.
class ReportMarket {
public:
    struct Closes {
        int order = 0; // the file's place in the listing
        QString code;
        std::vector<uint32_t> days;
        std::vector<float> closes;
    };

    ReportMarket() = default;
    ReportMarket(ReportMarket &&other) noexcept;

    // Safe from several threads at once. Files sharing a code: the earlier
    // listed one prices that code's trades.
    void addStock(int order, const QString &code, StockBars bars);

    // The day number of a date text, or -1 when no stock has that text.
    int dayOf(const QString &date) const;

    // The stocks in listing order and the calendar of their dates.
    std::vector<const Closes *> stocks() const;
    ReportCalendar calendar() const;
    // The calendar of the day numbers marked in `present`, which has dayCount() entries.
    ReportCalendar calendarOf(const std::vector<char> &present) const;
    size_t dayCount() const;
    // True when day numbers order as the date texts do (every date of the usual form).
    bool daysInDateOrder() const;

private:
    uint32_t internDay(std::string_view date);
    QString textOfDay(uint32_t day) const;

    mutable std::mutex m_mutex;
    std::vector<Closes> m_stocks;
    QHash<QString, uint32_t> m_otherDays; // dates not of the usual form
    std::vector<QString> m_otherTexts;
};
