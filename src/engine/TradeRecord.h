#pragma once

#include <QString>

// Where a trade stands: held, how it was sold, or waiting for the next open.
enum class TradeStatus : quint8 { Holding, TakeProfit, StopLoss, HoldExpired, SaleSignal, PendingBuy };

// The user's text for a status: "持股中", "止盈", "止损", "持股时间到期", "卖点", "待买入".
QString statusText(TradeStatus status);

// Whether a trade enters the summary's figures. Only ordinary sales do;
// pending buys and intraday take-profits are listed but not counted.
enum class SummaryCount : quint8 { Left, Counted };

// One simulated trade; while a position is open, also the position itself.
struct TradeRecord {
    QString code;
    QString buyDate;
    double buyPrice = 100.0;
    QString saleDate;
    double salePrice = 100.0;
    TradeStatus status = TradeStatus::Holding;
    int holdDays = 0;
    double volumeKey = 0.0;
    int buyIndex = 0;
    bool closed = false;
    SummaryCount summaryCount = SummaryCount::Left;
};

// Its texts are moved by their pointers alone, so growing a list of trades
// moves bytes instead of constructing every record anew.
Q_DECLARE_TYPEINFO(TradeRecord, Q_RELOCATABLE_TYPE);
