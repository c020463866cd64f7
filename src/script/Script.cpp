#include "Script.h"

void Script::clear()
{
    for (StatementObject *statement : m_buy)
        delete statement;
    for (StatementObject *statement : m_sale)
        delete statement;
    m_buy.clear();
    m_sale.clear();
}

int Script::parseStatementLine(const QString &line)
{
    if (line.startsWith(QLatin1Char('#')) || line.startsWith(QLatin1Char('/')))
        return 1;
    std::vector<StatementObject *> *list = nullptr;
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
    StatementObject *statement =
        body.split(QLatin1Char('|')).size() > 1 ? new StatementObjectNode : new StatementObject;
    if (!statement->parse(body)) {
        delete statement;
        return -1;
    }
    list->push_back(statement);
    return m_buy.empty() ? -2 : 1;
}

void Script::bind(StockBars bars)
{
    m_indicators.clear();
    const IndicatorCache::Scope sharing(m_indicators);
    for (StatementObject *statement : m_buy) {
        statement->reset();
        statement->bind(bars);
    }
    for (StatementObject *statement : m_sale) {
        statement->reset();
        statement->bind(bars);
    }
}

bool Script::isBuy(int dayIndex) const
{
    for (const StatementObject *statement : m_buy) {
        if (statement->evaluate(dayIndex) != 1)
            return false;
    }
    return true;
}

bool Script::isSale(int dayIndex) const
{
    for (const StatementObject *statement : m_sale) {
        if (statement->evaluate(dayIndex) == 1)
            return true;
    }
    return false;
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
