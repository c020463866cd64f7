#pragma once

#include <QTableWidgetItem>

// A cell that sorts by the number it shows; text that is no number counts as 0.
class OrderTableWidgetItem : public QTableWidgetItem {
public:
    using QTableWidgetItem::QTableWidgetItem;

    bool operator<(const QTableWidgetItem &other) const override
    {
        return text().toDouble() < other.text().toDouble();
    }
};
