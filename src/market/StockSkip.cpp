#include "StockSkip.h"

QString stockSkipText(StockSkip skip)
{
    switch (skip) {
    case StockSkip::None: break;
    case StockSkip::Unreadable: return QStringLiteral("无法读取 / unreadable");
    case StockSkip::TooLarge: return QStringLiteral("超过256 MB / over 256 MB");
    case StockSkip::NotRegularFile: return QStringLiteral("不是普通文件 / not a regular file");
    case StockSkip::TooFewDays: return QStringLiteral("不超过6天 / six days or fewer");
    case StockSkip::OtherFormat: return QStringLiteral("K线格式不是default / K-line format is not default");
    }
    return {};
}
