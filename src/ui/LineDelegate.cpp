#include "LineDelegate.h"

#include <QPainter>
#include <QStyle>
#include <QTableView>

LineDelegate::LineDelegate(QTableView *table) : QStyledItemDelegate(table)
{
    // The colour the style would have drawn the grid in.
    const int gridColour = table->style()->styleHint(QStyle::SH_Table_GridLineColor, nullptr, table);
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
