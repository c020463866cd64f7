#pragma once

#include <QTableView>

// The base of the program's stock tables: read-only, whole-row selection,
// sortable by header, rows parted by thin lines.
class StockListView : public QTableView {
    Q_OBJECT
public:
    explicit StockListView(QWidget *parent = nullptr);
};
