#pragma once

#include <QString>

#include <vector>

class TradeBook;

// How a trade ended, as far as the report tells trades apart.
enum class TradeExit { SalePoint, TakeProfit, StopLoss, HoldExpired, PendingBuy, Other };

// The status text a trade of that kind carries in the table and the CSV.
QString tradeExitText(TradeExit exit);

// One trade as the report reads it: nothing of how the run found it.
struct ReportTrade {
    QString code;
    QString buyDate;
    double buyPrice = 0;
    QString saleDate;
    double salePrice = 0;
    int holdDays = 0;
    TradeExit exit = TradeExit::Other;
    bool sold = false;            // a sale at a known price was recorded
    bool countsInSummary = false; // one of the summary box's trades

    // A trade the report computes with: sold at a known price, bought at a real one.
    bool isClosed() const { return sold && exit != TradeExit::PendingBuy && buyPrice > 0; }
    double returnPercent() const { return (salePrice - buyPrice) * 100 / buyPrice; }
};

// The book's trades in book order: buy date, then filing order.
std::vector<ReportTrade> reportTradesOf(const TradeBook &book);
