#include "SweepResultModel.h"

#include <limits>

SweepResultModel::SweepResultModel(QObject *parent) : QAbstractTableModel(parent) {}

void SweepResultModel::setTable(const SweepTable &table)
{
    beginResetModel();
    m_table = table;
    endResetModel();
}

int SweepResultModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_table.rows().size());
}

int SweepResultModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_table.header().size());
}

QVariant SweepResultModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const QString &text = m_table.rows()[size_t(index.row())][index.column()];
    if (role == Qt::DisplayRole)
        return text;
    if (role == Qt::TextAlignmentRole)
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    if (role == SortRole) {
        // A figure without a value ranks below every number.
        if (text.isEmpty())
            return -std::numeric_limits<double>::infinity();
        bool ok = false;
        const double value = text.toDouble(&ok);
        return ok ? QVariant(value) : QVariant(text);
    }
    return {};
}

QVariant SweepResultModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole)
        return {};
    if (orientation == Qt::Vertical)
        return section + 1;
    return m_table.header().value(section);
}
