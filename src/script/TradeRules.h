#pragma once

#include <QString>
#include <QStringList>

// Rules of a real account that the trade simulation can follow: shares sold
// from the day after the buy on (T+1), the daily price limits, and a stop-loss
// that acts as a stop order. All off unless a `config.` line asks for them.
struct TradeRules {
    enum class Limit { Off, Cents, Adjusted };

    bool t1 = false;           // "config.trade.t1,yes"
    Limit limit = Limit::Off;  // "config.trade.limit,yes" (prices as traded) or "adjusted"
    QStringList stCodes;       // "config.trade.limit.st": codes under the 5 % limit, "|"-separated
    bool stopIntraday = false; // "config.trade.stop.intraday,yes"

    // Stores a rule's value; false when the key is not one of the rules'.
    bool parseConfigValue(const QString &key, const QString &value);

    bool any() const { return t1 || limit != Limit::Off || stopIntraday; }

    // Every rule on, the limit on prices as traded; the ST list kept.
    TradeRules withEveryRule() const;
};

// The rules' keys, for the editor's vocabulary.
QStringList ruleKeywordList();
