#pragma once

#include "sweep/SweepTable.h"

#include <QAbstractTableModel>

#include <vector>

// A sweep's rows for a table view: the texts the CSV file holds, and for
// sorting each cell's number (values that are no number sort as texts,
// figures without a value last).
class SweepResultModel : public QAbstractTableModel {
    Q_OBJECT
public:
    static constexpr int SortRole = Qt::UserRole;

    explicit SweepResultModel(QObject *parent = nullptr);
    void setTable(const SweepTable &table);
    const SweepTable &table() const { return m_table; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    SweepTable m_table{{}};
};
