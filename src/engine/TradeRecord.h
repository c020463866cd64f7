#pragma once

#include <QString>

// One simulated trade; while a position is open, also the position itself.
struct TradeRecord {
    QString code;
    QString buyDate;
    double buyPrice = 100.0;
    QString saleDate;
    double salePrice = 100.0;
    QString status;
    int holdDays = 0;
    double volumeKey = 0.0;
    int buyIndex = 0;
    bool closed = false;
    int priceKind = 0; // 2 when sold through the ordinary sale step; only those count in the summary

    static constexpr int kOrdinarySale = 2;
};
