#include "ui/SweepDialog.h"
#include "WidgetTestSupport.h"
#include "ui/OrvelWidget.h"

#include <qcustomplot.h>

namespace {

const QString kScript = QStringLiteral("config.source.k.dir," ORVEL_SOURCE_DIR "/data\n"
                                       "# $note stays\n"
                                       "config.trade.max.hold.day,$hold\n"
                                       "buy.close,-1<ma,$n,-1\n"
                                       "buy.close,0>ma,$n,0\n"
                                       "sale.close,0<ma,10,0");

void fill(SweepDialog &dialog, const QString &n, const QString &hold)
{
    dialog.findChild<QLineEdit *>(QStringLiteral("range_n"))->setText(n);
    dialog.findChild<QLineEdit *>(QStringLiteral("range_hold"))->setText(hold);
}

QString status(const SweepDialog &dialog)
{
    QString texts;
    for (const QLabel *label : dialog.findChildren<QLabel *>())
        texts += label->text() + QLatin1Char('\n');
    return texts;
}

} // namespace

class SweepDialogTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(QDir::setCurrent(m_workDir.path())); }
    void aSearchFillsTheTableAndTheHeatMapAndARowBecomesTheScript();

private:
    QTemporaryDir m_workDir;
};

void SweepDialogTest::aSearchFillsTheTableAndTheHeatMapAndARowBecomesTheScript()
{
    OrvelWidget workbench;
    workbench.editor()->setPlainText(kScript);
    workbench.show();
    QTest::mouseClick(workbench.findChild<QPushButton *>(QStringLiteral("sweepButton")), Qt::LeftButton);
    auto *dialog = workbench.findChild<SweepDialog *>();
    QVERIFY(dialog);
    QVERIFY(!dialog->findChild<QLineEdit *>(QStringLiteral("range_note")));
    QTableView *table = dialog->table();
    const QAbstractItemModel *model = table->model();
    QAbstractItemModelTester tester(table->model());
    fill(*dialog, QStringLiteral("8:4"), QStringLiteral("2"));
    pressButton(dialog, QStringLiteral("开始"));
    QVERIFY(status(*dialog).contains(QStringLiteral("FROM is above TO")));
    // A cancelled search shows nothing of what it did.
    fill(*dialog, QStringLiteral("2:60"), QStringLiteral("1:20"));
    pressButton(dialog, QStringLiteral("开始"));
    pressButton(dialog, QStringLiteral("取消"));
    QTRY_VERIFY_WITH_TIMEOUT(status(*dialog).contains(QStringLiteral("已取消")), 60000);
    QCOMPARE(model->rowCount(), 0);

    fill(*dialog, QStringLiteral("4:8:2"), QStringLiteral("2,5,9"));
    pressButton(dialog, QStringLiteral("开始"));
    QTRY_COMPARE_WITH_TIMEOUT(model->rowCount(), 9, 60000);
    auto *map = qobject_cast<QCPColorMap *>(dialog->heatMap()->plottable(0));
    QVERIFY(map);
    QCOMPARE(map->data()->keySize(), 3);
    QCOMPARE(map->data()->valueSize(), 3);
    // Columns name the placeholders in the order the script first writes them;
    // the cell of hold=5, n=6 holds that row's total return.
    int found = 0;
    for (int row = 0; row < model->rowCount(); ++row) {
        if (model->index(row, 0).data() == "5" && model->index(row, 1).data() == "6") {
            QCOMPARE(map->data()->cell(1, 1), model->index(row, 6).data().toString().toDouble());
            ++found;
        }
    }
    QCOMPARE(found, 1);

    // Sorting reads numbers: 10 ranks above 9 however the texts would order.
    const int trades = 2;
    table->sortByColumn(trades, Qt::DescendingOrder);
    for (int row = 1; row < model->rowCount(); ++row)
        QVERIFY(model->index(row - 1, trades).data().toInt() >= model->index(row, trades).data().toInt());
    // The row shown first, the last combination, double-clicked becomes the editor's script.
    table->sortByColumn(1, Qt::DescendingOrder);
    QCOMPARE(model->index(0, 1).data().toString(), QStringLiteral("8"));
    clickRow(table, 0, true);
    const QString expected =
        QString(kScript)
            .replace(QStringLiteral("day,$hold"), "day," + model->index(0, 0).data().toString())
            .replace(QStringLiteral("ma,$n"), "ma," + model->index(0, 1).data().toString());
    QCOMPARE(workbench.editor()->toPlainText(), expected);
}

QTEST_MAIN(SweepDialogTest)
#include "SweepDialogTest.moc"
