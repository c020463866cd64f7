#pragma once

#include "SweepRun.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

// A sweep's results as the user reads them: one row of texts per combination,
// under a header of the placeholder names and the figures. The same rows make
// the CSV file and the ranked table on the terminal, and a file read back
// (shards being merged) gives the rows it was written from.
class SweepTable {
public:
    explicit SweepTable(const QStringList &names);

    const QStringList &header() const { return m_header; }
    const std::vector<QStringList> &rows() const { return m_rows; }

    // The summary's figures as the summary prints them, the account's as the
    // shortest text that reads back to the same number (empty for none).
    void add(const SweepResult &result);
    // Appends the rows of another table with the same header; false otherwise.
    bool append(const SweepTable &other);

    // UTF-8, a header line, "\n" line ends; cells quoted only when they must be.
    QByteArray csvBytes() const;
    // A file csvBytes() wrote, or nothing when it is not one.
    static std::optional<SweepTable> fromCsv(const QByteArray &bytes);

    // True for a column name; "最大回撤" ranks smallest first, others largest first.
    bool hasColumn(const QString &key) const { return m_header.contains(key); }
    // Row indexes, best first by `key`; rows without a value last, ties in grid order.
    std::vector<size_t> ranked(const QString &key) const;
    // The `top` best rows by `key`, aligned for a terminal.
    QString topText(const QString &key, int top) const;

    // The first figure column's name, the default ranking.
    static QString defaultKey();

private:
    QStringList m_header;
    std::vector<QStringList> m_rows;
};
