#pragma once

#include "ChartNavigator.h"
#include "engine/TodayPicks.h"

#include <QWidget>

#include <vector>

class PickTableModel;
class QLabel;
class QTableView;

// 选股: the stocks the script signals on the latest day of the data, every
// one of them, whatever positions or the per-day limit would allow. A row
// opens its stock's chart, PageUp and PageDown there go through the list.
class PicksPage : public QWidget {
    Q_OBJECT
public:
    PicksPage(ChartNavigator::Lookup lookup, QWidget *parent = nullptr);

    void setPicks(std::vector<StockPick> picks);

    QTableView *table() const { return m_table; }
    ChartNavigator *navigator() const { return m_navigator; }

private:
    PickTableModel *m_picks;
    QLabel *m_heading;
    QTableView *m_table;
    ChartNavigator *m_navigator;
};
