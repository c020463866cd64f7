#pragma once

#include "market/KLineSource.h"
#include "market/StockLoader.h"
#include "market/StockSummary.h"

#include <QElapsedTimer>
#include <QFutureWatcher>
#include <QWidget>

class ChartNavigator;
class MarketTableModel;
class QLabel;
class QLineEdit;
class QProgressBar;
class QSortFilterProxyModel;
class QTableView;

// 行情: every stock of the data folder with its latest day, sortable by any
// column and narrowed to the codes that start with what the user types.
// Enter or a double-click opens the stock's chart; PageUp and PageDown there
// go through the list. The files are read on worker threads and rows appear
// as they come; closing the window stops the reading.
class MarketBrowser : public QWidget {
    Q_OBJECT
public:
    explicit MarketBrowser(const KLineSource &source, QWidget *parent = nullptr);
    ~MarketBrowser() override;

    QLineEdit *prefixEdit() const { return m_prefix; }
    QTableView *table() const { return m_table; }
    ChartNavigator *navigator() const { return m_navigator; }
    // Until every row read is in the list (the reading itself may have ended a moment before).
    bool isReading() const { return m_readingTime < 0; }
    // How long reading the whole folder took, once it is done.
    qint64 readingMilliseconds() const { return m_readingTime; }

signals:
    void readingFinished();

private:
    void startReading();
    void takeRows(int begin, int end);
    void finishReading();
    void filterCodes(const QString &prefix);
    void openFirstOrCurrent();
    void showCount();
    const StockSeries *seriesOf(const QString &code);

    KLineSource m_source;
    MarketTableModel *m_stocks;
    QSortFilterProxyModel *m_sorted;
    QLineEdit *m_prefix;
    QLabel *m_count;
    QTableView *m_table;
    QProgressBar *m_progress;
    ChartNavigator *m_navigator;
    QFutureWatcher<StockSummary> m_reading;
    QElapsedTimer m_clock;
    qint64 m_readingTime = -1;
    StockLoader m_loader;
    StockSeries m_shown; // the series of the chart on screen
};
