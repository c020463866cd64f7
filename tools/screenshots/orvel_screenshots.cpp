// Pictures of the desktop program for the README: the main window as it
// opens, the summary box and the results window after the default script
// has run on the bundled market, with the first trade's chart shown, a
// trade held for days on a larger chart, the results window's 统计 and 选股
// pages, 行情 with a stock's chart, the workbench with a script error marked;
// then 参数优化 over the default script's moving average and holding time,
// with its heat map.
//
//   orvel-screenshots [--data DIR] [--out DIR]
//
// Runs in a scratch working directory, so neither "output.csv" nor a
// "config.conf" of the caller's is touched; the default script's "data"
// there leads to DIR.
#include "market/TextFile.h"
#include "ui/CandlestickView.h"
#include "ui/ChartNavigator.h"
#include "ui/MarketBrowser.h"
#include "ui/OrvelAnalyst.h"
#include "ui/OrvelStockMsgBox.h"
#include "ui/OrvelWidget.h"
#include "ui/PicksPage.h"
#include "ui/ReportPage.h"
#include "ui/ScriptEditor.h"
#include "ui/StockListViewStrategy.h"
#include "ui/StrategyViewWidget.h"
#include "ui/SweepDialog.h"
#include "ui/TradeMarks.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QStyleFactory>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <QTimer>
#include <QTranslator>
#include <qcustomplot.h>

#include <cstdio>

namespace {

// Waits for `ms` while the event loop runs, so that windows lay out and paint.
void settle(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

bool save(QWidget *window, const QString &path)
{
    const bool saved = window->grab().save(path);
    std::fprintf(stderr, "%s %s\n", saved ? "wrote" : "could not write", qPrintable(path));
    return saved;
}

// Handles the summary box that opens at the end of a run, then the results window.
class RunPhotographer : public QObject {
public:
    RunPhotographer(const QDir &out, OrvelWidget *workbench) : m_out(out), m_workbench(workbench)
    {
        connect(&m_timer, &QTimer::timeout, this, &RunPhotographer::poll);
        m_timer.start(50);
    }
    bool done() const { return m_done; }
    bool ok() const { return m_ok; }

private:
    void poll()
    {
        QWidget *modal = QApplication::activeModalWidget();
        if (!modal) {
            StrategyViewWidget *results = m_workbench->results();
            if (results && results->isVisible() && !m_done) {
                m_done = true;
                photographResults(results);
                results->close();
            }
            return;
        }
        if (modal == m_handled)
            return;
        m_handled = modal;
        if (auto *box = qobject_cast<OrvelStockMsgBox *>(modal)) {
            settle(200);
            m_ok = save(box, m_out.filePath(QStringLiteral("orvel-summary.png"))) && m_ok;
            box->accept();
        } else {
            modal->close();
        }
    }

    void photographResults(StrategyViewWidget *results)
    {
        // Larger than it opens, as a user would pull it: every code and date in full.
        results->resize(results->width() + 120, 640);
        StockListViewStrategy *table = results->table();
        if (table->model()->rowCount() > 0)
            table->selectRow(0);
        settle(300);
        m_ok = save(results, m_out.filePath(QStringLiteral("orvel-results.png"))) && m_ok;
        photographChart(results);
        results->findChild<QTabWidget *>()->setCurrentWidget(results->reportPage());
        results->resize(results->width(), 900);
        settle(300);
        m_ok = save(results, m_out.filePath(QStringLiteral("orvel-report-page.png"))) && m_ok;
        results->findChild<QTabWidget *>()->setCurrentWidget(results->picksPage());
        results->resize(results->width(), 420);
        settle(300);
        m_ok = save(results, m_out.filePath(QStringLiteral("orvel-picks.png"))) && m_ok;
    }

    // A trade held for days, with the days before its signal in view, larger,
    // with the crosshair on its buy day.
    void photographChart(StrategyViewWidget *results)
    {
        StockListViewStrategy *table = results->table();
        for (int row = 0; row < table->model()->rowCount(); ++row) {
            const TradeRecord &trade =
                table->trades()->trade(table->sorted()->mapToSource(table->sorted()->index(row, 0)).row());
            if (trade.closed && trade.holdDays >= 3 && trade.buyIndex >= 40) {
                table->selectRow(row);
                break;
            }
        }
        results->resize(960, 820);
        settle(300);
        CandlestickView *chart = results->chart();
        const TradeMarks &marks = chart->marks();
        if (!marks.buy()->data()->isEmpty()) {
            const double key = marks.buy()->data()->begin()->key;
            const QPointF at(chart->timeAxis()->coordToPixel(key),
                             chart->priceAxis()->coordToPixel(marks.buy()->data()->begin()->value));
            QMouseEvent move(QEvent::MouseMove, at, chart->plot()->mapToGlobal(at), Qt::NoButton,
                             Qt::NoButton, Qt::NoModifier);
            QApplication::sendEvent(chart->plot(), &move);
        }
        settle(200);
        m_ok = save(chart, m_out.filePath(QStringLiteral("orvel-chart.png"))) && m_ok;
    }

    QDir m_out;
    OrvelWidget *m_workbench;
    QTimer m_timer;
    QPointer<QWidget> m_handled;
    bool m_done = false;
    bool m_ok = true;
};

bool photographSweep(const QDir &out)
{
    QString script = readTextFile(QStringLiteral(":qrc/default.script"));
    script.replace(QStringLiteral("max.hold.day,3"), QStringLiteral("max.hold.day,$hold"))
        .replace(QStringLiteral("ma,5,"), QStringLiteral("ma,$n,"));
    SweepDialog dialog(script);
    dialog.resize(1000, 620);
    dialog.show();
    dialog.findChild<QLineEdit *>(QStringLiteral("range_n"))->setText(QStringLiteral("3:12"));
    dialog.findChild<QLineEdit *>(QStringLiteral("range_hold"))->setText(QStringLiteral("1:8"));
    for (QPushButton *button : dialog.findChildren<QPushButton *>()) {
        if (button->text() == QStringLiteral("开始"))
            button->click();
    }
    for (int wait = 0; wait < 1200 && dialog.table()->model()->rowCount() == 0; ++wait)
        settle(100);
    dialog.table()->sortByColumn(6, Qt::DescendingOrder);
    settle(300);
    return dialog.table()->model()->rowCount() > 0 &&
           save(&dialog, out.filePath(QStringLiteral("orvel-sweep.png")));
}

// 行情 narrowed to the codes that start with 60, with the first one's chart.
bool photographMarket(const QDir &out)
{
    MarketBrowser browser(KLineSource{QStringLiteral("data")});
    browser.show();
    while (browser.isReading())
        settle(50);
    browser.prefixEdit()->setText(QStringLiteral("60"));
    browser.table()->selectRow(0);
    settle(300);
    bool ok = save(&browser, out.filePath(QStringLiteral("orvel-market.png")));
    if (browser.navigator()->openCurrent()) {
        settle(300);
        ok =
            save(browser.navigator()->window(), out.filePath(QStringLiteral("orvel-market-chart.png"))) && ok;
    }
    return ok;
}

// The default script with one operand short of an argument: the editor
// jumps to the line, marks it and numbers every line.
bool photographError(OrvelAnalyst &window, const QDir &out)
{
    auto *editor = window.findChild<ScriptEditor *>(QStringLiteral("scriptEdit"));
    QString script = editor->toPlainText();
    script.replace(QStringLiteral("buy.close,0>ma,5,0"), QStringLiteral("buy.close,0>ma,5"));
    editor->setPlainText(script);
    editor->checkWarnings();
    // The box explaining the error is closed as soon as it shows; the mark stays.
    QTimer closer;
    QObject::connect(&closer, &QTimer::timeout, [] {
        if (QWidget *modal = QApplication::activeModalWidget())
            modal->close();
    });
    closer.start(100);
    window.workbench()->clickButton();
    closer.stop();
    settle(300);
    return save(&window, out.filePath(QStringLiteral("orvel-error.png")));
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption dataOption(QStringLiteral("data"), QStringLiteral("the market to run on"),
                                        QStringLiteral("DIR"), QStringLiteral(ORVEL_SOURCE_DIR "/data"));
    const QCommandLineOption outOption(QStringLiteral("out"), QStringLiteral("where the pictures go"),
                                       QStringLiteral("DIR"), QStringLiteral(ORVEL_SOURCE_DIR "/docs"));
    parser.addOptions({dataOption, outOption});
    parser.process(app);
    const QString data = QFileInfo(parser.value(dataOption)).absoluteFilePath();
    const QDir out(QFileInfo(parser.value(outOption)).absoluteFilePath());
    if (!QDir().mkpath(out.path()) || QDir(data).isEmpty(QDir::Files)) {
        std::fprintf(stderr, "need a market in %s and a writable %s\n", qPrintable(data),
                     qPrintable(out.path()));
        return 1;
    }

    // Set up as the program itself starts.
    QTranslator translator;
    if (translator.load(QStringLiteral(":qrc/qt_zh_CN.qm")))
        QApplication::installTranslator(&translator);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));

    QTemporaryDir workDir;
    if (!workDir.isValid() || !QFile::link(data, workDir.filePath(QStringLiteral("data"))) ||
        !QDir::setCurrent(workDir.path()))
        return 1;

    OrvelAnalyst window;
    window.resize(640, 520);
    window.show();
    settle(300);
    bool ok = save(&window, out.filePath(QStringLiteral("orvel-main.png")));

    RunPhotographer photographer(out, window.workbench());
    window.findChild<QPushButton *>(QStringLiteral("runButton"))->click();
    while (!photographer.done())
        settle(50);
    ok = photographSweep(out) && ok;
    ok = photographMarket(out) && ok;
    ok = photographError(window, out) && ok;
    return ok && photographer.ok() ? 0 : 1;
}
