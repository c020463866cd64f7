#pragma once

#include "ReportSettings.h"
#include "TradeRules.h"
#include "market/KLineSource.h"

#include <QString>
#include <QStringList>

// Where a sale is priced: "close" sells at the exit day's close, anything
// else at the next day's open. `Unset` (any text but "open" and "close")
// also sells at the next open, but becomes `Close` when the sale settings
// are normalised; a written "open" stays.
enum class SalePoint { Unset, Open, Close };
// "yes": take profit intraday at the exact target.
enum class RapidSale { No, Yes };
// One day's buys by volume: "desc" keeps the largest, anything else the smallest.
enum class BuyOrder { Ascending, Descending };

// The strategy's settings, filled by "config.conf" and then by the `config.`
// lines of the script being compiled.
struct StrategyConfig {
    QString kDir = QStringLiteral("data");
    QString kFormat = QStringLiteral("default");
    SalePoint salePoint = SalePoint::Unset;
    RapidSale saleRapid = RapidSale::No;
    int maxHoldDay = 36;
    int minExclude = 1;
    float maxProfit = 72.0f;
    float maxLost = -10.0f;
    int maxCount = 3;
    float maxAllowIncrease = 3.6f;
    float maxAllowDecrease = -3.6f;
    BuyOrder buyOrder = BuyOrder::Descending;
    // The report's account ("config.report.*"); the trades never read it.
    ReportSettings report;
    // Real-account rules ("config.trade.t1" and its siblings); all off by default.
    TradeRules rules;
    QString kStocks = QStringLiteral("only");

    // 1: a known key was stored; 0: two fields but an unknown key; -1: the
    // line is not "key,value". Unknown, report and rule keys normalise the sale settings.
    int parseConfigLine(const QString &line);

    // Applies every line of `text`.
    void applyLines(const QString &text);

    // Applies "config.conf" from the working directory, or the built-in copy
    // when that cannot be read or is empty. Always true.
    bool loadConfigFile(const QString &path = QStringLiteral("config.conf"));

    // The text loadConfigFile() applies.
    static QString configFileText(const QString &path = QStringLiteral("config.conf"));
    // The data settings as the market reads them.
    KLineSource kLineSource() const { return {kDir, kFormat, kStocks}; }

private:
    void normaliseSaleSettings();
};

// Script and configuration text split at "\n" with empty pieces kept; one
// trailing "\r" is removed from each line, so CR LF files read like LF files.
QStringList splitScriptLines(const QString &text);

// The editor's vocabulary of configuration entries, "|"-separated.
QString configKeywordList();
