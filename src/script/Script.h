#pragma once

#include "StatementObject.h"
#include "StrategyConfig.h"
#include "indicators/IndicatorCache.h"

#include <vector>

// The compiled strategy: buy statements (all must hold) and sale statements
// (any one suffices), in script order.
class Script {
public:
    Script() = default;
    Script(const Script &) = delete;
    Script &operator=(const Script &) = delete;
    ~Script() { clear(); }

    void clear();
    bool hasBuyStatement() const { return !m_buy.empty(); }

    // 1 accepted (comment or statement), -1 not understood, -2 a sale
    // statement before any buy statement.
    int parseStatementLine(const QString &line);

    void bind(StockBars bars);
    bool isBuy(int dayIndex) const;
    bool isSale(int dayIndex) const;

private:
    std::vector<StatementObject *> m_buy;
    std::vector<StatementObject *> m_sale;
    IndicatorCache m_indicators;
};

// Compiles `text` into `script`, applying its `config.` lines to `config`.
// 1 on success; -1 on failure with `lineNumber` the 1-based failing line, or
// -1 when the script has no buy statement.
int compileScript(Script &script, StrategyConfig &config, const QString &text, int &lineNumber);
