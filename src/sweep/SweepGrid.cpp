#include "SweepGrid.h"

#include <QRegularExpression>

#include <algorithm>
#include <limits>
#include <optional>

namespace {

constexpr qint64 kSaturated = std::numeric_limits<qint64>::max() / 4;

// A plain decimal number: its digits without the point and how many followed it.
struct Decimal {
    QString digits;
    int decimals = 0;
};

std::optional<Decimal> readDecimal(const QString &text)
{
    static const QRegularExpression form(QStringLiteral("^([+-]?\\d{1,15})(?:\\.(\\d{1,6}))?$"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    return Decimal{match.captured(1) + match.captured(2), int(match.captured(2).size())};
}

qint64 scaled(const Decimal &number, int decimals)
{
    qint64 value = number.digits.toLongLong();
    for (int i = number.decimals; i < decimals; ++i)
        value *= 10;
    return value;
}

} // namespace

QString SweepGrid::Axis::valueAt(qint64 index) const
{
    if (!list.isEmpty())
        return list[index];
    const qint64 value = from + index * step;
    if (decimals == 0)
        return QString::number(value);
    qint64 unit = 1;
    for (int i = 0; i < decimals; ++i)
        unit *= 10;
    const qint64 magnitude = value < 0 ? -value : value;
    QString fraction = QStringLiteral("%1").arg(magnitude % unit, decimals, 10, QLatin1Char('0'));
    while (fraction.endsWith(QLatin1Char('0')))
        fraction.chop(1);
    QString text = value < 0 ? QStringLiteral("-") : QString();
    text += QString::number(magnitude / unit);
    return fraction.isEmpty() ? text : text + QLatin1Char('.') + fraction;
}

QString SweepGrid::addAxis(const QString &text)
{
    const qsizetype equals = text.indexOf(QLatin1Char('='));
    QString name = text.left(std::max<qsizetype>(equals, 0));
    if (name.startsWith(QLatin1Char('$')))
        name.remove(0, 1);
    const bool nameOk = !name.isEmpty() && std::all_of(name.begin(), name.end(), [](QChar c) {
        return c.isLetter() || c.isDigit() || c == QLatin1Char('_');
    });
    if (equals < 0 || !nameOk)
        return QStringLiteral(
                   "--vary 需要 名称=从:到[:步长] 或 名称=a,b,c / --vary needs name=FROM:TO[:STEP] or "
                   "name=a,b,c: %1")
            .arg(text);
    Axis axis;
    axis.name = name;
    for (const Axis &other : m_axes) {
        if (other.name == axis.name)
            return QStringLiteral("--vary 重复的名称 / --vary names %1 twice").arg(axis.name);
    }
    const QString values = text.mid(equals + 1);
    if (!values.contains(QLatin1Char(':'))) {
        axis.list = values.split(QLatin1Char(','));
        if (axis.list.contains(QString()))
            return QStringLiteral("--vary %1: 取值不能为空 / a value is empty").arg(axis.name);
        axis.count = axis.list.size();
        m_axes.push_back(axis);
        return {};
    }
    const QStringList parts = values.split(QLatin1Char(':'));
    std::vector<Decimal> numbers;
    for (const QString &part : parts) {
        const std::optional<Decimal> number = readDecimal(part);
        if (!number || parts.size() > 3)
            return QStringLiteral("--vary %1: 范围应为 从:到[:步长] 的数 / the range must be numbers "
                                  "FROM:TO[:STEP]: %2")
                .arg(axis.name, values);
        numbers.push_back(*number);
        axis.decimals = std::max(axis.decimals, number->decimals);
    }
    axis.from = scaled(numbers[0], axis.decimals);
    const qint64 to = scaled(numbers[1], axis.decimals);
    axis.step = numbers.size() == 3 ? scaled(numbers[2], axis.decimals)
                                    : scaled({QStringLiteral("1"), 0}, axis.decimals);
    if (axis.step <= 0)
        return QStringLiteral("--vary %1: 步长必须大于0 / the step must be above 0").arg(axis.name);
    if (axis.from > to)
        return QStringLiteral("--vary %1: 起点大于终点 / FROM is above TO").arg(axis.name);
    axis.count = (to - axis.from) / axis.step + 1;
    m_axes.push_back(axis);
    return {};
}

QStringList SweepGrid::names() const
{
    QStringList names;
    for (const Axis &axis : m_axes)
        names << axis.name;
    return names;
}

qint64 SweepGrid::size() const
{
    if (m_axes.empty())
        return 0;
    qint64 product = 1;
    for (const Axis &axis : m_axes)
        product = axis.count > kSaturated / product ? kSaturated : product * axis.count;
    return product;
}

QStringList SweepGrid::axisValues(int axis) const
{
    QStringList values;
    for (qint64 i = 0; i < m_axes[size_t(axis)].count; ++i)
        values << m_axes[size_t(axis)].valueAt(i);
    return values;
}

QStringList SweepGrid::valuesAt(qint64 index) const
{
    QStringList values;
    for (auto axis = m_axes.rbegin(); axis != m_axes.rend(); ++axis) {
        values.prepend(axis->valueAt(index % axis->count));
        index /= axis->count;
    }
    return values;
}

std::pair<qint64, qint64> SweepGrid::shard(int shard, int count) const
{
    const qint64 total = size();
    // The products stay far from overflowing: runnable grids are small.
    return {total * (shard - 1) / count, total * shard / count};
}
