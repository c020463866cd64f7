// A trader writes and checks a script: its colours, where an error is and
// why, what is questionable before the run, and nothing of the work is lost.
#include "WidgetTestSupport.h"
#include "market/TextFile.h"
#include "ui/OrvelAnalyst.h"
#include "ui/OrvelWidget.h"
#include "ui/ScriptEditor.h"
#include "ui/StockConfigWidget.h"
#include "ui/StrategyViewWidget.h"

namespace {

// The viewport point in the middle of `line`'s first row, at `column`.
QPoint pointAt(ScriptEditor *editor, int line, int column)
{
    QTextCursor cursor(editor->document()->findBlockByNumber(line - 1));
    cursor.setPosition(cursor.position() + column);
    return editor->cursorRect(cursor).center();
}

// The format of the first character of `text` on line `line` (from 0), as the highlighter left it.
QTextCharFormat formatAt(const QTextEdit *editor, int line, const QString &text)
{
    const QTextBlock block = editor->document()->findBlockByNumber(line);
    const qsizetype position = block.text().indexOf(text);
    QTextCharFormat result;
    for (const QTextLayout::FormatRange &range : block.layout()->formats()) {
        if (position >= range.start && position < range.start + range.length)
            result = range.format;
    }
    return result;
}

} // namespace

class WorkbenchTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(QDir::setCurrent(m_workDir.path()));
        QSettings().clear();
    }
    void namesOfTheLanguageAndCommentsAreColoured();
    void aCompileErrorMarksItsLineAndSaysWhy();
    void aValueThatIsNotANumberIsUnderlinedBeforeTheRun();
    void theSettingsARunUsedAreShownAfterIt();
    void anEditedScriptIsNotClosedWithoutAsking();
    void anExportedScriptIsGbkWithItsExtensionAndIsThereNextTime();

private:
    QTemporaryDir m_workDir;
};

void WorkbenchTest::namesOfTheLanguageAndCommentsAreColoured()
{
    OrvelAnalyst window;
    const QTextEdit *editor = window.workbench()->editor();
    window.workbench()->editor()->setPlainText(QStringLiteral(
        "buy.close,0>ma,5,0 // a note\nbuy.k.旭日东升,0\nconfig.trade.max.count,3\n// close,0"));
    const auto colour = [editor](int line, const char *text) {
        return formatAt(editor, line, QString::fromUtf8(text)).foreground().color();
    };
    QCOMPARE(colour(0, "close"), QColor(Qt::darkBlue));
    QCOMPARE(formatAt(editor, 0, QStringLiteral("close")).fontWeight(), int(QFont::Bold));
    QCOMPARE(colour(0, "ma,"), QColor(Qt::darkBlue));
    QVERIFY(!formatAt(editor, 0, QStringLiteral("buy")).hasProperty(QTextFormat::ForegroundBrush));
    QCOMPARE(colour(0, "// a"), QColor(Qt::red));
    QCOMPARE(colour(0, "note"), QColor(Qt::red));
    QCOMPARE(colour(3, "close"), QColor(Qt::red)); // a name in a comment is comment
    // The vocabulary holds the pattern names and the configuration keys too.
    QCOMPARE(colour(1, "旭日"), QColor(Qt::darkBlue));
    QCOMPARE(colour(2, "max"), QColor(Qt::darkBlue));
}

void WorkbenchTest::aCompileErrorMarksItsLineAndSaysWhy()
{
    OrvelAnalyst window;
    window.resize(800, 600);
    window.show();
    auto *editor = child<ScriptEditor>(window, "scriptEdit");
    QVERIFY(editor->lineNumberArea()->isVisible());
    QVERIFY(editor->viewport()->x() >= editor->lineNumberAreaWidth()); // the numbers cover no text

    editor->setPlainText(QStringLiteral("# test\nbuy.close,0>open,0\nbuy.ma,5>open,0\nsale.close,0<open,0"));
    QStringList boxes;
    ModalWatcher watcher(noteBoxes(boxes));
    // F5 runs from the editor.
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    editor->setFocus();
    QTest::keyClick(editor, Qt::Key_F5);
    QTRY_COMPARE(boxes.size(), 1);
    const QString reason = QStringLiteral("参数个数不对：“ma”需要2个参数（周期,偏移），这里写了1个");
    QCOMPARE(boxes[0], QStringLiteral("预编译出错|第:3行有错误\n") + reason);
    QCOMPARE(editor->errorLine(), 3);
    QCOMPARE(editor->textCursor().blockNumber(), 2);
    QCOMPARE(editor->toolTipAt(pointAt(editor, 3, 5)), reason);
    QVERIFY(editor->toolTipAt(pointAt(editor, 2, 5)).isEmpty());

    // Mending the line takes the mark away.
    editor->textCursor().insertText(QStringLiteral("#"));
    QCOMPARE(editor->errorLine(), 0);
    QVERIFY(editor->toolTipAt(pointAt(editor, 3, 5)).isEmpty());
}

void WorkbenchTest::aValueThatIsNotANumberIsUnderlinedBeforeTheRun()
{
    OrvelAnalyst window;
    window.show();
    auto *editor = child<ScriptEditor>(window, "scriptEdit");
    editor->setPlainText(QStringLiteral("config.trade.max.hold.day,abc\nbuy.close,0>open,0"));
    // Found by itself once typing pauses.
    QTRY_COMPARE(editor->warnings().size(), size_t(1));
    const QString tip = editor->toolTipAt(pointAt(editor, 1, 27));
    QCOMPARE(tip, QStringLiteral("“abc”不是可用的数字，按0计算"));
    QVERIFY(editor->toolTipAt(pointAt(editor, 1, 5)).isEmpty());
    bool underlined = false;
    for (const QTextEdit::ExtraSelection &selection : editor->extraSelections()) {
        underlined |= selection.format.underlineStyle() == QTextCharFormat::WaveUnderline &&
                      selection.cursor.selectedText() == QLatin1String("abc");
    }
    QVERIFY(underlined);

    // The configuration editor names the same warning before anything is saved.
    StockConfigWidget config;
    config.show();
    config.editor()->setPlainText(QStringLiteral("config.source.k.dir,data\nconfig.trade.max.hold.day,abc"));
    QTRY_VERIFY(config.warningLine()->text().contains(QStringLiteral("“abc”不是可用的数字")));
    QVERIFY(config.warningLine()->text().startsWith(QStringLiteral("1条提示 · 第2行")));
    QVERIFY(!QFile::exists(QStringLiteral("config.conf")));
}

// Without the ticket line no unknown key settles the sale point: sales move
// from the close to the next open, and the line says so.
void WorkbenchTest::theSettingsARunUsedAreShownAfterIt()
{
    const QString market = QStringLiteral(ORVEL_SOURCE_DIR "/data");
    if (QDir(market).isEmpty(QDir::Files))
        QSKIP("no sample market");
    const int stocks = int(QDir(market).entryList(QDir::Files).size());
    QStringList lines;
    for (const QString &ticket : {QStringLiteral("config.source.ticket.dir,tick\n"), QString()}) {
        QVERIFY(writeTestFile(QStringLiteral("config.conf"),
                              QStringLiteral("config.source.k.dir,%1\n%2").arg(market, ticket).toUtf8()));
        OrvelAnalyst window;
        window.show();
        window.workbench()->editor()->setPlainText(QStringLiteral("buy.close,0>open,0\nsale.close,0<open,0"));
        ModalWatcher boxes([](QWidget *) {});
        QTest::mouseClick(child<QPushButton>(window, "runButton"), Qt::LeftButton);
        QTRY_VERIFY_WITH_TIMEOUT(window.workbench()->results() && window.workbench()->results()->isVisible(),
                                 60000);
        window.workbench()->results()->close();
        lines << child<QLabel>(window, "runSettings")->text();
    }
    QFile::remove(QStringLiteral("config.conf"));
    const QString common = QStringLiteral("（读取%1只股票） | 卖出时机 %2 | 立即止盈 否 | 最长持股 36天");
    QVERIFY2(lines[0].contains(common.arg(stocks).arg(QStringLiteral("收盘"))), qPrintable(lines[0]));
    QVERIFY2(lines[1].contains(common.arg(stocks).arg(QStringLiteral("次日开盘"))), qPrintable(lines[1]));
    QVERIFY(lines[0].startsWith(QStringLiteral("本次运行: 数据 ") + QDir::toNativeSeparators(market)));
}

void WorkbenchTest::anEditedScriptIsNotClosedWithoutAsking()
{
    OrvelAnalyst window;
    window.show();
    window.close(); // the program's own script: nothing to ask
    QVERIFY(!window.isVisible());

    window.show();
    auto *editor = child<ScriptEditor>(window, "scriptEdit");
    editor->setFocus();
    QTest::keyClicks(editor, QStringLiteral("#x"));
    QStringList asked;
    QString answer = QStringLiteral("取消");
    ModalWatcher watcher(answerQuestions(asked, answer));
    window.close();
    QCOMPARE(asked.size(), 1);
    QVERIFY(asked[0].contains(QStringLiteral("脚本已修改")));
    QVERIFY(window.isVisible());
    answer = QStringLiteral("不导出");
    window.close();
    QCOMPARE(asked.size(), 2);
    QVERIFY(!window.isVisible());
}

void WorkbenchTest::anExportedScriptIsGbkWithItsExtensionAndIsThereNextTime()
{
    const QString script = QStringLiteral("# 均线\nbuy.close,0>ma,5,0");
    {
        OrvelAnalyst window;
        window.show();
        window.resize(640, 480);
        window.workbench()->editor()->setPlainText(script);
        QCOMPARE(window.exportScript(m_workDir.filePath(QStringLiteral("mine"))),
                 m_workDir.filePath(QStringLiteral("mine.script")));
        QCOMPARE(readTestFile(m_workDir.filePath(QStringLiteral("mine.script"))),
                 TextFile::encode(script, TextEncoding::Gbk));
        QVERIFY(!QFile::exists(m_workDir.filePath(QStringLiteral("mine"))));
        // A name with an extension is taken as it is.
        QCOMPARE(window.exportScript(m_workDir.filePath(QStringLiteral("mine.txt"))),
                 m_workDir.filePath(QStringLiteral("mine.txt")));
        window.exportScript(m_workDir.filePath(QStringLiteral("mine.script")));
        window.close(); // saved: no question
        QVERIFY(!window.isVisible());
    }
    OrvelAnalyst again;
    QCOMPARE(again.workbench()->editor()->toPlainText(), script);
    QCOMPARE(again.size(), QSize(640, 480));
}

QTEST_MAIN(WorkbenchTest)
#include "WorkbenchTest.moc"
