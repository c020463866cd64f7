#include "ScriptPlaceholders.h"

namespace {

bool isNameChar(QChar c) { return c.isLetter() || c.isDigit() || c == QLatin1Char('_'); }

bool takesPlaceholders(QStringView line)
{
    return line.startsWith(QLatin1String("buy.")) || line.startsWith(QLatin1String("sale.")) ||
           line.startsWith(QLatin1String("config."));
}

// Calls `found(start, length)` for each placeholder of a line, "$" included.
template <typename Found>
void forEachPlaceholder(QStringView line, Found found)
{
    if (!takesPlaceholders(line))
        return;
    for (qsizetype i = 0; i < line.size(); ++i) {
        if (line[i] != QLatin1Char('$'))
            continue;
        qsizetype end = i + 1;
        while (end < line.size() && isNameChar(line[end]))
            ++end;
        if (end > i + 1)
            found(i, end - i);
        i = end - 1;
    }
}

QString dollarList(const QStringList &names)
{
    QStringList marked;
    for (const QString &name : names)
        marked << QLatin1Char('$') + name;
    return marked.join(QStringLiteral(", "));
}

} // namespace

namespace ScriptPlaceholders {

QStringList names(const QString &script)
{
    QStringList found;
    for (const QStringView line : QStringView(script).split(QLatin1Char('\n'))) {
        forEachPlaceholder(line, [&](qsizetype start, qsizetype length) {
            const QString name = line.mid(start + 1, length - 1).toString();
            if (!found.contains(name))
                found << name;
        });
    }
    return found;
}

QString substitute(const QString &script, const QHash<QString, QString> &values)
{
    QString result;
    result.reserve(script.size());
    bool first = true;
    for (const QStringView line : QStringView(script).split(QLatin1Char('\n'))) {
        if (!first)
            result += QLatin1Char('\n');
        first = false;
        qsizetype copied = 0;
        forEachPlaceholder(line, [&](qsizetype start, qsizetype length) {
            const auto value = values.constFind(line.mid(start + 1, length - 1).toString());
            if (value == values.constEnd())
                return;
            result += line.mid(copied, start - copied);
            result += *value;
            copied = start + length;
        });
        result += line.mid(copied);
    }
    return result;
}

QString mismatch(const QStringList &used, const QStringList &given)
{
    QStringList missing, unused;
    for (const QString &name : used) {
        if (!given.contains(name))
            missing << name;
    }
    for (const QString &name : given) {
        if (!used.contains(name))
            unused << name;
    }
    QStringList problems;
    if (!missing.isEmpty())
        problems << QStringLiteral("占位符没有取值 / no values for: %1").arg(dollarList(missing));
    if (!unused.isEmpty())
        problems << QStringLiteral("脚本中没有这些占位符 / not in the script: %1").arg(dollarList(unused));
    return problems.join(QLatin1Char('\n'));
}

QString leftoverWarning(const QString &script)
{
    const QStringList left = names(script);
    if (left.isEmpty())
        return {};
    return QStringLiteral("脚本含有未取值的占位符 / the script still holds placeholders: %1")
        .arg(dollarList(left));
}

} // namespace ScriptPlaceholders
