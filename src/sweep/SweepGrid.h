#pragma once

#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

// The values a sweep tries for each placeholder and every combination of
// them, in a fixed order: the first name varies slowest, the last fastest.
class SweepGrid {
public:
    // Adds one "name=FROM:TO[:STEP]" (STEP 1 when left out) or "name=a,b,c";
    // a "$" before the name is allowed. The user's words for what is wrong, or empty.
    QString addAxis(const QString &text);

    QStringList names() const;
    // The number of combinations; saturates far above anything runnable.
    qint64 size() const;
    // Every value of one name, in the order tried.
    QStringList axisValues(int axis) const;
    // The values of one combination, in the order of names().
    QStringList valuesAt(qint64 index) const;

    // The combinations [first, last) of the `shard`-th (from 1) of `count`
    // nearly equal slices, in grid order.
    std::pair<qint64, qint64> shard(int shard, int count) const;

private:
    // A range keeps its decimal numbers as whole multiples of 10^-decimals,
    // so 0.1:0.3:0.1 gives exactly 0.1, 0.2 and 0.3.
    struct Axis {
        QString name;
        QStringList list; // the values of a list, empty for a range
        qint64 from = 0;
        qint64 step = 1;
        qint64 count = 0;
        int decimals = 0;

        QString valueAt(qint64 index) const;
    };

    std::vector<Axis> m_axes;
};
