#include "ReportTrade.h"

#include "engine/TradeBook.h"

namespace {

TradeExit exitOf(TradeStatus status)
{
    switch (status) {
    case TradeStatus::SaleSignal: return TradeExit::SalePoint;
    case TradeStatus::TakeProfit: return TradeExit::TakeProfit;
    case TradeStatus::StopLoss: return TradeExit::StopLoss;
    case TradeStatus::HoldExpired: return TradeExit::HoldExpired;
    case TradeStatus::PendingBuy: return TradeExit::PendingBuy;
    case TradeStatus::Holding: break;
    }
    return TradeExit::Other;
}

} // namespace

QString tradeExitText(TradeExit exit)
{
    switch (exit) {
    case TradeExit::SalePoint: return QStringLiteral("卖点");
    case TradeExit::TakeProfit: return QStringLiteral("止盈");
    case TradeExit::StopLoss: return QStringLiteral("止损");
    case TradeExit::HoldExpired: return QStringLiteral("持股时间到期");
    case TradeExit::PendingBuy: return QStringLiteral("待买入");
    case TradeExit::Other: break;
    }
    return QString();
}

std::vector<ReportTrade> reportTradesOf(const TradeBook &book)
{
    std::vector<ReportTrade> trades;
    for (qsizetype row = 0; row < book.size(); ++row) {
        const TradeRecord &record = book[row];
        trades.push_back({book.code(record), TradeDate::text(record.buyDate), record.buyPrice,
                          TradeDate::text(record.saleDate), record.salePrice, record.holdDays,
                          exitOf(record.status), record.closed, record.summaryCount == SummaryCount::Counted});
    }
    return trades;
}
