#include "CsvKLineReader.h"

#include "CsvReader.h"
#include "DecimalNumber.h"
#include "TextFile.h"

#include <QDate>
#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <optional>

namespace {

enum Column { Date, Open, High, Low, Close, Volume, ColumnCount };

// The names each needed column goes by; a unit in brackets may follow
// ("成交量(股)").
const std::array<QStringList, ColumnCount> kColumnNames = {
    QStringList{"date", "日期", "交易日期", "trade_date"},
    QStringList{"open", "开盘", "开盘价"},
    QStringList{"high", "最高", "最高价"},
    QStringList{"low", "最低", "最低价"},
    QStringList{"close", "收盘", "收盘价"},
    QStringList{"volume", "vol", "成交量"},
};

bool namesColumn(const QString &header, const QStringList &names)
{
    for (const QString &name : names) {
        if (header == name)
            return true;
        if (header.startsWith(name) && header.size() > name.size() &&
            (header[name.size()] == QLatin1Char('(') || header[name.size()] == QChar(0xFF08)))
            return true;
    }
    return false;
}

// Each needed column's index, or the name of the first one missing.
QString findColumns(const QStringList &header, std::array<qsizetype, ColumnCount> &columns)
{
    for (int c = 0; c < ColumnCount; ++c) {
        columns[size_t(c)] = -1;
        for (qsizetype i = 0; i < header.size() && columns[size_t(c)] < 0; ++i)
            if (namesColumn(header[i].trimmed().toLower(), kColumnNames[size_t(c)]))
                columns[size_t(c)] = i;
        if (columns[size_t(c)] < 0)
            return kColumnNames[size_t(c)].front();
    }
    return {};
}

struct Row {
    QString date;
    float values[5]; // open, high, low, close, volume
};

// A number as the text format reads it; nothing when it is not one.
std::optional<float> number(const QString &field)
{
    const QByteArray bytes = field.toLatin1();
    const std::string_view text(bytes.constData(), size_t(bytes.size()));
    if (!DecimalNumber::toDouble(text))
        return std::nullopt;
    return DecimalNumber::toFloat(text);
}

bool readRow(const QStringList &fields, const std::array<qsizetype, ColumnCount> &columns, Row &row)
{
    for (const qsizetype column : columns)
        if (column >= fields.size())
            return false;
    row.date = CsvKLineReader::normalDate(fields[columns[Date]]);
    if (row.date.isEmpty())
        return false;
    for (int c = Open; c <= Volume; ++c) {
        const std::optional<float> value = number(fields[columns[size_t(c)]]);
        if (!value || (c != Volume && *value <= 0) || *value < 0)
            return false;
        row.values[c - Open] = *value;
    }
    return true;
}

void fillSeries(std::vector<Row> &rows, StockSeries &series)
{
    // Every later step orders days by their date text, so the file's order
    // does not matter; a stable sort keeps repeated dates as written.
    std::stable_sort(rows.begin(), rows.end(), [](const Row &a, const Row &b) { return a.date < b.date; });
    series.text().resize(rows.size() * 10);
    char *dates = series.text().data();
    series.bars.reserve(rows.size());
    float previousClose = -1.0f;
    for (const Row &row : rows) {
        const QByteArray date = row.date.toLatin1();
        std::copy(date.begin(), date.end(), dates);
        Stock bar;
        bar.date = std::string_view(dates, size_t(date.size()));
        dates += date.size();
        bar.open = row.values[0];
        bar.high = row.values[1];
        bar.low = row.values[2];
        bar.close = row.values[3];
        bar.volume = row.values[4];
        appendDay(series.bars, bar, previousClose);
    }
}

} // namespace

QString CsvKLineReader::normalDate(QStringView text)
{
    static const QRegularExpression separated(QStringLiteral("^(\\d{4})[-/.](\\d{1,2})[-/.](\\d{1,2})$"));
    static const QRegularExpression compact(QStringLiteral("^(\\d{4})(\\d{2})(\\d{2})$"));
    // A time of day after the date ("2021-01-04 00:00:00") is dropped.
    const QString day = text.trimmed().toString().section(QRegularExpression(QStringLiteral("[ T]")), 0, 0);
    QRegularExpressionMatch match = separated.match(day);
    if (!match.hasMatch())
        match = compact.match(day);
    if (!match.hasMatch())
        return {};
    const QDate date(match.captured(1).toInt(), match.captured(2).toInt(), match.captured(3).toInt());
    if (!date.isValid() || date.year() < 1900 || date.year() > 2099)
        return {};
    return date.toString(QStringLiteral("yyyy-MM-dd"));
}

QString CsvKLineReader::read(std::string_view bytes, StockSeries &series)
{
    series.bars.clear();
    const QString text = TextFile::decode(QByteArray::fromRawData(bytes.data(), qsizetype(bytes.size())));
    const QStringView content = QStringView(text).trimmed();
    CsvReader reader(content, CsvReader::guessSeparator(content));
    QStringList fields;
    if (!reader.readRow(fields))
        return QStringLiteral("empty");
    std::array<qsizetype, ColumnCount> columns;
    if (const QString missing = findColumns(fields, columns); !missing.isEmpty())
        return QStringLiteral("missing column %1").arg(missing);

    std::vector<Row> rows;
    int skipped = 0;
    Row row;
    while (reader.readRow(fields)) {
        if (readRow(fields, columns, row))
            rows.push_back(row);
        else
            ++skipped;
    }
    fillSeries(rows, series);
    if (skipped == 0)
        return {};
    return QStringLiteral("%1 of %2 rows skipped (bad date or number)")
        .arg(skipped)
        .arg(skipped + rows.size());
}
