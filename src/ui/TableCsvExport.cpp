#include "TableCsvExport.h"

#include "OrvelStockMsgBox.h"
#include "market/SpreadsheetCsv.h"

#include <QAbstractItemView>
#include <QAction>
#include <QFileDialog>

namespace TableCsvExport {

QString write(const QAbstractItemModel &model, const QString &path)
{
    QStringList header;
    for (int column = 0; column < model.columnCount(); ++column)
        header << model.headerData(column, Qt::Horizontal).toString();
    std::vector<QStringList> rows(size_t(model.rowCount()));
    for (int row = 0; row < model.rowCount(); ++row) {
        for (int column = 0; column < model.columnCount(); ++column)
            rows[size_t(row)] << model.index(row, column).data().toString();
    }
    return SpreadsheetCsv::write(path, header, rows);
}

void addAction(QAbstractItemView *view, const QString &fileName)
{
    auto *action = new QAction(QStringLiteral("导出CSV…"), view);
    view->setContextMenuPolicy(Qt::ActionsContextMenu);
    view->addAction(action);
    QObject::connect(action, &QAction::triggered, view, [view, fileName] {
        const QString path = QFileDialog::getSaveFileName(view, QStringLiteral("导出CSV"), fileName,
                                                          QStringLiteral("CSV (*.csv)"));
        if (path.isEmpty())
            return;
        const QString error = write(*view->model(), path);
        if (!error.isEmpty()) {
            OrvelStockMsgBox box(QStringLiteral("警告"), QStringLiteral("无法写入 %1: %2").arg(path, error),
                                 view);
            box.exec();
        }
    });
}

} // namespace TableCsvExport
