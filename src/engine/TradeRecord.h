#pragma once

#include "TradeDate.h"

#include <QString>

// Where a trade stands: held, how it was sold, or waiting for the next open.
enum class TradeStatus : quint8 { Holding, TakeProfit, StopLoss, HoldExpired, SaleSignal, PendingBuy };

// The user's text for a status: "持股中", "止盈", "止损", "持股时间到期", "卖点", "待买入".
QString statusText(TradeStatus status);

// Whether a trade enters the summary's figures. Only ordinary sales do;
// pending buys and intraday take-profits are listed but not counted.
enum class SummaryCount : quint8 { Left, Counted };

// One simulated trade; while a position is open, also the position itself.
// A whole market's trades are many: the stock is its place in the run's file
// list and the dates are numbers (TradeDate), made into texts only where they
// are shown or written.
struct TradeRecord {
    double buyPrice = 100.0;
    double salePrice = 100.0;
    double volumeKey = 0.0;
    int buyDate = TradeDate::kNone;
    int saleDate = TradeDate::kNone;
    int holdDays = 0;
    int buyIndex = 0;
    int stock = 0; // a day's trades stand in the order of their stocks
    TradeStatus status = TradeStatus::Holding;
    bool closed = false;
    SummaryCount summaryCount = SummaryCount::Left;
};

// A trade as the trade list shows it: the record and its stock's code.
struct TradeRow : TradeRecord {
    QString code;
};
