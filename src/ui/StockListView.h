#pragma once

#include <QMap>
#include <QStringList>
#include <QTableWidget>

// One row of a stock list as texts, the stock's code first.
using StockRow = QStringList;

// The base of the program's stock tables: read-only, whole-row selection,
// sortable by header, rows parted by thin lines. Each subclass fixes its
// columns; the base remembers the rows added by code and the last click.
class StockListView : public QTableWidget {
    Q_OBJECT
public:
    explicit StockListView(QWidget *parent = nullptr);

    const QMap<QString, StockRow> &stocks() const { return m_stocks; }

signals:
    void senderData(const QString &code, const QString &date);

public slots:
    void addStock(const StockRow &row);
    void addStocks(const QList<StockRow> &rows);
    void onClick(int row, int column);

protected slots:
    virtual void onClickRow(int row, int column);
    // Appends one row: each text in a plain cell, left to right.
    virtual void appendRow(const StockRow &row);

protected:
    void setHeaders(const QStringList &headers);
    // Appends an empty row and returns its index; sorting is suspended by
    // the caller, see appendRow().
    int newRow();

private:
    QMap<QString, StockRow> m_stocks;
    int m_clickedRow = -1;
    int m_clickedColumn = -1;
};
