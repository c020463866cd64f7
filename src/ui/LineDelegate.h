#pragma once

#include <QPen>
#include <QStyledItemDelegate>

class QTableView;

// Paints each cell without a focus frame and with one thin line along its
// bottom: with the table grid off, rows are set apart and columns are not.
class LineDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    explicit LineDelegate(QTableView *table);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

private:
    QPen m_pen;
};
