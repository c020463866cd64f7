#include "SweepTable.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace {

const char *const kFigures[] = {"买卖次数", "平均持股天数", "策略成功率", "平均收益",
                                "总收益",   "最大回撤",     "夏普比率"};

QString shortestText(const Figure &value)
{
    if (!value)
        return {};
    char buffer[32];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, *value).ptr;
    return QString::fromLatin1(buffer, end - buffer);
}

QString csvCell(const QString &text)
{
    if (!text.contains(QLatin1Char(',')) && !text.contains(QLatin1Char('"')) &&
        !text.contains(QLatin1Char('\n')) && !text.contains(QLatin1Char('\r')))
        return text;
    return QLatin1Char('"') + QString(text).replace(QLatin1String("\""), QLatin1String("\"\"")) +
           QLatin1Char('"');
}

// One CSV line's cells; quoted cells may hold commas and doubled quotes.
QStringList csvCells(const QString &line)
{
    QStringList cells;
    QString cell;
    bool quoted = false;
    for (qsizetype i = 0; i < line.size(); ++i) {
        const QChar c = line[i];
        if (quoted && c == QLatin1Char('"')) {
            if (i + 1 < line.size() && line[i + 1] == QLatin1Char('"'))
                cell += line[++i];
            else
                quoted = false;
        } else if (!quoted && c == QLatin1Char('"')) {
            quoted = true;
        } else if (!quoted && c == QLatin1Char(',')) {
            cells << cell;
            cell.clear();
        } else {
            cell += c;
        }
    }
    cells << cell;
    return cells;
}

// Terminal columns: the wide forms of East Asian scripts take two.
int displayWidth(const QString &text)
{
    int width = 0;
    for (const QChar c : text)
        width += c.unicode() >= 0x1100 && !c.isLowSurrogate() ? 2 : 1;
    return width;
}

} // namespace

SweepTable::SweepTable(const QStringList &names) : m_header(names)
{
    for (const char *figure : kFigures)
        m_header << QString::fromUtf8(figure);
}

QString SweepTable::defaultKey() { return QString::fromUtf8(kFigures[4]); }

void SweepTable::add(const SweepResult &result)
{
    QStringList row = result.values;
    row << QString::number(result.summary.trades) << fixedTwoDecimals(result.summary.averageHoldDays)
        << fixedTwoDecimals(result.summary.successRate) << fixedTwoDecimals(result.summary.averageGain)
        << shortestText(result.totalReturn) << shortestText(result.maxDrawdown)
        << shortestText(result.sharpe);
    m_rows.push_back(row);
}

bool SweepTable::append(const SweepTable &other)
{
    if (other.m_header != m_header)
        return false;
    m_rows.insert(m_rows.end(), other.m_rows.begin(), other.m_rows.end());
    return true;
}

QByteArray SweepTable::csvBytes() const
{
    QString text;
    const auto addLine = [&text](const QStringList &cells) {
        for (qsizetype i = 0; i < cells.size(); ++i)
            text += (i ? QStringLiteral(",") : QString()) + csvCell(cells[i]);
        text += QLatin1Char('\n');
    };
    addLine(m_header);
    for (const QStringList &row : m_rows)
        addLine(row);
    return text.toUtf8();
}

std::optional<SweepTable> SweepTable::fromCsv(const QByteArray &bytes)
{
    if (!bytes.endsWith('\n'))
        return std::nullopt;
    QStringList lines = QString::fromUtf8(bytes).split(QLatin1Char('\n'));
    lines.removeLast();
    const QStringList header = csvCells(lines.takeFirst());
    const qsizetype names = header.size() - qsizetype(std::size(kFigures));
    SweepTable table(header.first(std::max<qsizetype>(names, 0)));
    if (names < 0 || table.m_header != header)
        return std::nullopt;
    for (const QString &line : lines) {
        table.m_rows.push_back(csvCells(line));
        if (table.m_rows.back().size() != header.size())
            return std::nullopt;
    }
    return table;
}

std::vector<size_t> SweepTable::ranked(const QString &key) const
{
    const qsizetype column = m_header.indexOf(key);
    const bool ascending = key == QString::fromUtf8(kFigures[5]);
    using Keyed = std::pair<std::optional<double>, size_t>;
    std::vector<Keyed> keyed;
    for (size_t i = 0; i < m_rows.size(); ++i) {
        bool ok = false;
        const double value = m_rows[i][column].toDouble(&ok);
        keyed.emplace_back(ok && !std::isnan(value) ? std::optional<double>(value) : std::nullopt, i);
    }
    std::stable_sort(keyed.begin(), keyed.end(), [ascending](const Keyed &a, const Keyed &b) {
        if (!a.first || !b.first)
            return a.first.has_value() && !b.first.has_value();
        const double x = *a.first;
        const double y = *b.first;
        return ascending ? x < y : x > y;
    });
    std::vector<size_t> order;
    for (const auto &[value, index] : keyed)
        order.push_back(index);
    return order;
}

QString SweepTable::topText(const QString &key, int top) const
{
    std::vector<size_t> order = ranked(key);
    order.resize(std::min(order.size(), size_t(std::max(top, 0))));
    std::vector<int> widths;
    for (const QString &name : m_header)
        widths.push_back(displayWidth(name));
    for (const size_t row : order) {
        for (size_t c = 0; c < widths.size(); ++c)
            widths[c] = std::max(widths[c], displayWidth(m_rows[row][qsizetype(c)]));
    }
    QString text;
    const auto addLine = [&](const QStringList &cells) {
        for (qsizetype c = 0; c < cells.size(); ++c) {
            const int pad = widths[size_t(c)] - displayWidth(cells[c]);
            text += (c ? QStringLiteral("  ") : QString()) + QString(pad, QLatin1Char(' ')) + cells[c];
        }
        text += QLatin1Char('\n');
    };
    addLine(m_header);
    for (const size_t row : order)
        addLine(m_rows[row]);
    return text;
}
