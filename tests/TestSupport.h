#pragma once

#include "market/KLineParser.h"

#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <initializer_list>
#include <string>

// One day for hand-made series: date, open, close, high, low, volume.
struct Day {
    const char *date;
    double open, close, high, low, volume;
};

// K-line text of the given days, quoted as the quote service writes it.
inline std::string klineText(std::initializer_list<Day> days)
{
    std::string text = "kline_dayhfq={\"data\":[";
    bool first = true;
    for (const Day &d : days) {
        text += first ? "[" : ",[";
        first = false;
        text += "\"" + std::string(d.date) + "\",\"" + std::to_string(d.open) + "\",\"" + std::to_string(d.close) +
                "\",\"" + std::to_string(d.high) + "\",\"" + std::to_string(d.low) + "\",\"" +
                std::to_string(d.volume) + "\"]";
    }
    return text + "]}";
}

inline StockSeries seriesOf(std::initializer_list<Day> days, const char *code = "600000")
{
    StockSeries series;
    parseKLineText(klineText(days), series);
    series.code = QString::fromLatin1(code);
    return series;
}

// Collects the program's log lines while alive.
class LogCapture {
public:
    LogCapture()
    {
        s_lines.clear();
        m_previous = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext &, const QString &message) { s_lines.append(message); });
    }
    ~LogCapture() { qInstallMessageHandler(m_previous); }
    const QStringList &lines() const { return s_lines; }

private:
    static inline QStringList s_lines;
    QtMessageHandler m_previous;
};

inline QString sharedDir() { return QStringLiteral(ORVEL_SHARED_DIR); }
