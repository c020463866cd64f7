#include "LineDelegate.h"

#include <QPainter>
#include <QStyle>
#include <QTableView>

LineDelegate::LineDelegate(QTableView *table) : QStyledItemDelegate(table)
{
    // The colour the style would have drawn the grid in. The style reads it
    // from the palette of the option it is given; without one it answers a
    // transparent colour and the lines would not show.
    QStyleOptionViewItem option;
    option.initFrom(table);
    const int gridColour = table->style()->styleHint(QStyle::SH_Table_GridLineColor, &option, table);
    m_pen = QPen(QColor::fromRgba(static_cast<QRgb>(gridColour)), 0, table->gridStyle());
}

void LineDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                         const QModelIndex &index) const
{
    QStyleOptionViewItem cell(option);
    cell.state &= ~QStyle::State_HasFocus;
    QStyledItemDelegate::paint(painter, cell, index);

    const QPen previous = painter->pen();
    painter->setPen(m_pen);
    painter->drawLine(cell.rect.bottomLeft(), cell.rect.bottomRight());
    painter->setPen(previous);
}
