#pragma once

#include "StatementObject.h"
#include "StrategyConfig.h"
#include "indicators/IndicatorCache.h"

#include <QSet>

#include <vector>

// The compiled strategy: buy statements (all must hold) and sale statements
// (any one suffices), in script order. A copy is a fresh, unbound copy of the
// compiled statements: each worker binds its own.
class Script {
public:
    void clear();
    bool hasBuyStatement() const { return !m_buy.empty(); }

    // 1 accepted (comment or statement), -1 not understood, -2 a sale
    // statement before any buy statement.
    int parseStatementLine(const QString &line);

    // Binds every statement to one stock; `cache` is cleared first and then
    // shared by all terms, so each indicator is computed once per stock.
    void bind(StockBars bars, IndicatorCache &cache);
    bool isBuy(int dayIndex) const;
    bool isSale(int dayIndex) const;
    // isBuy() and isSale() for every day of [from, to), at [day - from]:
    // each term reads its column once instead of being asked day by day.
    void buyDays(int from, int to, unsigned char *buy, DayColumns &columns) const;
    void saleDays(int from, int to, unsigned char *sale, DayColumns &columns) const;

private:
    std::vector<StatementObjectNode> m_buy;
    std::vector<StatementObjectNode> m_sale;
    // The statement lines taken so far: a repeated one changes nothing (all
    // buy statements must hold, any sale statement suffices), so it is kept once.
    QSet<QString> m_statementLines;
};

// Compiles `text` into `script`, applying its `config.` lines to `config`.
// 1 on success; -1 on failure with `lineNumber` the 1-based failing line, or
// -1 when the script has no buy statement.
int compileScript(Script &script, StrategyConfig &config, const QString &text, int &lineNumber);
