#include "StockListViews.h"

#include "StockListViewStrategy.h"

BidStockListView::BidStockListView(QWidget *parent) : StockListView(parent)
{
    setHeaders({QStringLiteral("代码"), QStringLiteral("名称"), QStringLiteral("得分"),
                QStringLiteral("价格"), QStringLiteral("买卖比"), QStringLiteral("涨幅"),
                QStringLiteral("行业"), QStringLiteral("地域"), QStringLiteral("市值")});
}

LHBStockListView::LHBStockListView(QWidget *parent) : StockListView(parent)
{
    setHeaders({QStringLiteral("代码"), QStringLiteral("名称"), QStringLiteral("价格"),
                QStringLiteral("成交量(万手)"), QStringLiteral("成交额"), QStringLiteral("类型"),
                QStringLiteral("日期")});
}

LHBPKStockListView::LHBPKStockListView(QWidget *parent) : StockListView(parent)
{
    setHeaders({QStringLiteral("代码"), QStringLiteral("名称"), QStringLiteral("涨幅"),
                QStringLiteral("类型"), QStringLiteral("点评"), QStringLiteral("日期")});
}

OCHLBasicStockListView::OCHLBasicStockListView(QWidget *parent) : StockListView(parent)
{
    setHeaders({QStringLiteral("代码"), QStringLiteral("名称"), QStringLiteral("涨幅"),
                QStringLiteral("现价"), QStringLiteral("昨收"), QStringLiteral("今开"),
                QStringLiteral("最高"), QStringLiteral("最低"), QStringLiteral("成交量"),
                QStringLiteral("成交额"), QStringLiteral("换手率"), QStringLiteral("形态评分"),
                QStringLiteral("资金评分")});
}

BasicStockListView::BasicStockListView(QWidget *parent) : StockListView(parent)
{
    setHeaders({QStringLiteral("代码"), QStringLiteral("名称"), QStringLiteral("行业"),
                QStringLiteral("地域"), QStringLiteral("股本"), QStringLiteral("流通股本"),
                QStringLiteral("上市日期")});
}

StockListView *createStockListView(int type, QWidget *parent)
{
    switch (type) {
    case 0: return new BidStockListView(parent);
    case 1: return new LHBStockListView(parent);
    case 2: return new LHBPKStockListView(parent);
    case 3: return new OCHLBasicStockListView(parent);
    case 4: return new BasicStockListView(parent);
    case 6: return new StockListViewStrategy(parent);
    default: return nullptr; // 5 was never given a table
    }
}
