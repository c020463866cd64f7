#include "TradeRecord.h"

QString statusText(TradeStatus status)
{
    switch (status) {
    case TradeStatus::Holding: return QStringLiteral("持股中");
    case TradeStatus::TakeProfit: return QStringLiteral("止盈");
    case TradeStatus::StopLoss: return QStringLiteral("止损");
    case TradeStatus::HoldExpired: return QStringLiteral("持股时间到期");
    case TradeStatus::SaleSignal: return QStringLiteral("卖点");
    case TradeStatus::PendingBuy: return QStringLiteral("待买入");
    }
    return {};
}
