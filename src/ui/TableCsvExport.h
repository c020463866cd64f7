#pragma once

#include <QString>

class QAbstractItemModel;
class QAbstractItemView;

// A table as the user sees it (its columns, its rows in their current
// order) written as a CSV file spreadsheets open with the Chinese intact.
namespace TableCsvExport {

// An error text, or empty.
QString write(const QAbstractItemModel &model, const QString &path);

// Adds "导出CSV…" to the view's context menu: it asks where, suggesting
// `fileName`, and writes the view's table there.
void addAction(QAbstractItemView *view, const QString &fileName);

} // namespace TableCsvExport
