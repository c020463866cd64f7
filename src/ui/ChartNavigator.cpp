#include "ChartNavigator.h"

#include "CandlestickView.h"

#include <QAbstractItemView>

ChartNavigator::ChartNavigator(QAbstractItemView *list, int codeColumn, Lookup lookup)
    : QObject(list), m_list(list), m_codeColumn(codeColumn), m_lookup(std::move(lookup))
{
    connect(list, &QAbstractItemView::activated, this, [this](const QModelIndex &index) {
        m_list->setCurrentIndex(index);
        openCurrent();
    });
}

CandlestickView *ChartNavigator::window() const { return m_window; }

bool ChartNavigator::openCurrent()
{
    const QModelIndex current = m_list->currentIndex();
    if (!current.isValid())
        return false;
    const QString code = current.siblingAtColumn(m_codeColumn).data().toString();
    const StockSeries *series = m_lookup(code);
    if (!series || series->bars.empty())
        return false;
    if (!m_window) {
        // A window of its own, owned by the list's: it closes with it.
        m_window = new CandlestickView(m_list->window());
        m_window->setWindowFlag(Qt::Window);
        m_window->setAttribute(Qt::WA_DeleteOnClose);
        m_window->resize(820, 560);
        connect(m_window, &CandlestickView::previousStockRequested, this, [this] { step(-1); });
        connect(m_window, &CandlestickView::nextStockRequested, this, [this] { step(1); });
    }
    m_window->showStock(*series);
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
    return true;
}

// Rows that no longer read are stepped over, so PageDown never sticks.
void ChartNavigator::step(int by)
{
    const QAbstractItemModel *model = m_list->model();
    for (int row = m_list->currentIndex().row() + by; row >= 0 && row < model->rowCount(); row += by) {
        m_list->setCurrentIndex(model->index(row, m_codeColumn));
        if (openCurrent())
            return;
    }
}
