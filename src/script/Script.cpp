#include "Script.h"

#include <algorithm>

void Script::clear()
{
    m_buy.clear();
    m_sale.clear();
    m_statementLines.clear();
}

int Script::parseStatementLine(const QString &line)
{
    if (line.startsWith(QLatin1Char('#')) || line.startsWith(QLatin1Char('/')))
        return 1;
    std::vector<StatementObjectNode> *list = nullptr;
    QString body;
    if (line.startsWith(QLatin1String("buy."))) {
        list = &m_buy;
        body = line.mid(4);
    } else if (line.startsWith(QLatin1String("sale."))) {
        list = &m_sale;
        body = line.mid(5);
    } else {
        return -1;
    }
    if (!m_statementLines.contains(line)) {
        StatementObjectNode statement;
        if (!statement.parse(body))
            return -1;
        list->push_back(std::move(statement));
        m_statementLines.insert(line);
    }
    return m_buy.empty() ? -2 : 1;
}

void Script::bind(StockBars bars, IndicatorCache &cache)
{
    cache.clear();
    for (StatementObjectNode &statement : m_buy)
        statement.bind(bars, cache);
    for (StatementObjectNode &statement : m_sale)
        statement.bind(bars, cache);
}

bool Script::isBuy(int dayIndex) const
{
    for (const StatementObjectNode &statement : m_buy) {
        if (!statement.holds(dayIndex))
            return false;
    }
    return true;
}

bool Script::isSale(int dayIndex) const
{
    for (const StatementObjectNode &statement : m_sale) {
        if (statement.holds(dayIndex))
            return true;
    }
    return false;
}

namespace {

// Every statement's days combined: all must hold (`all`) or any one suffices.
void combineStatements(const std::vector<StatementObjectNode> &statements, bool all, int from, int to,
                       unsigned char *result, DayColumns &columns)
{
    const size_t days = size_t(std::max(0, to - from));
    columns.fit(days);
    combineDays(
        statements, all, from, days, nullptr, result, columns.statementAsked.data(), columns.statement.data(),
        [&](const StatementObjectNode &statement, const unsigned char *open, unsigned char *column) {
            statement.holdsOnDays(from, to, open, column, columns);
        },
        [](const StatementObjectNode &statement, int day) { return statement.holds(day); });
}

} // namespace

void Script::buyDays(int from, int to, unsigned char *buy, DayColumns &columns) const
{
    combineStatements(m_buy, true, from, to, buy, columns);
}

void Script::saleDays(int from, int to, unsigned char *sale, DayColumns &columns) const
{
    combineStatements(m_sale, false, from, to, sale, columns);
}

int compileScript(Script &script, StrategyConfig &config, const QString &text, int &lineNumber)
{
    script.clear();
    int counter = 1;
    for (const QString &line : splitScriptLines(text)) {
        const bool accepted = line.startsWith(QLatin1String("config."))
                                  ? config.parseConfigLine(line) != -1
                                  : script.parseStatementLine(line) == 1;
        if (!accepted) {
            lineNumber = counter;
            return -1;
        }
        ++counter;
    }
    if (!script.hasBuyStatement()) {
        lineNumber = -1;
        return -1;
    }
    return 1;
}
