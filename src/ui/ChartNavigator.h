#pragma once

#include "market/Stock.h"

#include <QObject>
#include <QPointer>

#include <functional>

class QAbstractItemView;
class CandlestickView;

// Links a list of stocks to a chart window: activating a row (Enter or a
// double-click) opens its stock's chart, and the chart's PageUp/PageDown
// move along the list as the user sees it, sorted and filtered.
class ChartNavigator : public QObject {
    Q_OBJECT
public:
    // The series of a code, or nullptr when it cannot be read; the pointer
    // need only live until the next call.
    using Lookup = std::function<const StockSeries *(const QString &code)>;

    ChartNavigator(QAbstractItemView *list, int codeColumn, Lookup lookup);

    // Opens the chart of the list's current row; false when there is none to show.
    bool openCurrent();
    // The chart, in a window of its own once a row has been opened.
    CandlestickView *window() const;

private:
    void step(int by);

    QAbstractItemView *m_list;
    int m_codeColumn;
    Lookup m_lookup;
    QPointer<CandlestickView> m_window;
};
