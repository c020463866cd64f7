#pragma once

#include "market/KLineParser.h"

#include <QFile>
#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <cstdio>
#include <ostream>
#include <string>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <vector>

// Readable failures: texts as themselves, not as code units.
inline void PrintTo(const QString &text, std::ostream *out) { *out << '"' << text.toStdString() << '"'; }

// One day for hand-made series: date, open, close, high, low, volume.
struct Day {
    const char *date;
    double open, close, high, low, volume;
};

// K-line text of the given days, quoted as the quote service writes it.
inline std::string klineText(const std::vector<Day> &days)
{
    std::string text = "kline_dayhfq={\"data\":[";
    char day[256];
    for (const Day &d : days) {
        std::snprintf(day, sizeof day, R"(%s["%s","%f","%f","%f","%f","%f"])", text.back() == '[' ? "" : ",",
                      d.date, d.open, d.close, d.high, d.low, d.volume);
        text.append(day);
    }
    return text.append("]}");
}

inline StockSeries seriesOf(const std::vector<Day> &days, const char *code = "600000")
{
    StockSeries series;
    parseKLineText(klineText(days), series);
    series.code = QString::fromLatin1(code);
    return series;
}

// `count` flat days at 10 from 2020-01-10, the seventh with a volume of 500
// (a buy signal for "buy.vol,0>value,100") and the others 1, as K-line text.
inline QByteArray flatDays(int count = 9)
{
    QByteArray text = "[[";
    for (int i = 0; i < count; ++i)
        text += (i ? "],[" : "") + QByteArray("2020-01-") + QByteArray::number(10 + i) + ",10,10,10,10," +
                (i == 6 ? "500" : "1");
    return text + "]]";
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

inline bool writeTestFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

inline QByteArray readTestFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline QString sharedDir() { return QStringLiteral(ORVEL_SHARED_DIR); }

// Nodes no program should write over, made in `dir` (never the system's own):
// a FIFO, and a character device with the null device's numbers when we may
// make one (as root). Their paths.
inline QStringList makeSpecialNodes(const QString &dir)
{
    QStringList nodes;
    const QString fifo = dir + QStringLiteral("/fifo");
    if (::mkfifo(QFile::encodeName(fifo).constData(), 0644) == 0)
        nodes.append(fifo);
    const QString device = dir + QStringLiteral("/device");
    if (::mknod(QFile::encodeName(device).constData(), S_IFCHR | 0666, makedev(1, 3)) == 0)
        nodes.append(device);
    return nodes;
}
