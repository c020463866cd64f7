// A user types a script and reads its colours.
#include "ui/Highlighter.h"
#include "ui/OrvelWidget.h"

#include <QTextBlock>
#include <QTextEdit>
#include <QTextDocument>
#include <QTextLayout>
#include <QtTest>

namespace {

// The format the highlighter gave the character at `position` of line `line`.
QTextCharFormat formatAt(const QTextDocument &document, int line, int position)
{
    const QTextBlock block = document.findBlockByNumber(line);
    QTextCharFormat result;
    for (const QTextLayout::FormatRange &range : block.layout()->formats()) {
        if (position >= range.start && position < range.start + range.length)
            result = range.format;
    }
    return result;
}

QColor colourAt(const QTextDocument &document, int line, int position)
{
    return formatAt(document, line, position).foreground().color();
}

// An editor with the workbench's highlighter, coloured as it is typed.
struct Script {
    explicit Script(const QString &text)
        : highlighter(editor.document(), OrvelWidget::keywordPatterns()), document(*editor.document())
    {
        editor.setPlainText(text);
    }
    QTextEdit editor;
    Highlighter highlighter;
    QTextDocument &document;
};

int columnOf(const QTextDocument &document, int line, const QString &text)
{
    return int(document.findBlockByNumber(line).text().indexOf(text));
}

} // namespace

class HighlighterTest : public QObject {
    Q_OBJECT

private slots:
    void conditionWithCommentAndQuote();
    void namesBeforeParenthesesAreBlueItalic();
    void blockCommentsRunOverLines();
    void patternNamesAndConfigurationKeysAreKeywords();
};

void HighlighterTest::conditionWithCommentAndQuote()
{
    Script script(QStringLiteral("buy.close,0>ma,5,0 // a \"note\" QString"));
    const QTextDocument &document = script.document;

    const int close = columnOf(document, 0, QStringLiteral("close"));
    QCOMPARE(colourAt(document, 0, close), QColor(Qt::darkBlue));
    QCOMPARE(formatAt(document, 0, close).fontWeight(), int(QFont::Bold));
    QCOMPARE(colourAt(document, 0, columnOf(document, 0, QStringLiteral("ma,"))), QColor(Qt::darkBlue));
    QVERIFY(!formatAt(document, 0, 0).hasProperty(QTextFormat::ForegroundBrush)); // "buy." is plain
    QCOMPARE(colourAt(document, 0, columnOf(document, 0, QStringLiteral("//"))), QColor(Qt::red));
    QCOMPARE(colourAt(document, 0, columnOf(document, 0, QStringLiteral("a \""))), QColor(Qt::red));
    // Quotes are applied after comments, so they stay green inside one.
    QCOMPARE(colourAt(document, 0, columnOf(document, 0, QStringLiteral("note"))), QColor(Qt::darkGreen));
    QCOMPARE(colourAt(document, 0, columnOf(document, 0, QStringLiteral("QString"))), QColor(Qt::red));
}

void HighlighterTest::namesBeforeParenthesesAreBlueItalic()
{
    Script script(QStringLiteral("ma(5) QTimer close"));
    const QTextDocument &document = script.document;
    QCOMPARE(colourAt(document, 0, 0), QColor(Qt::blue));
    QVERIFY(formatAt(document, 0, 0).fontItalic());
    const int qtName = columnOf(document, 0, QStringLiteral("QTimer"));
    QCOMPARE(colourAt(document, 0, qtName), QColor(Qt::darkMagenta));
    QCOMPARE(formatAt(document, 0, qtName).fontWeight(), int(QFont::Bold));
}

void HighlighterTest::blockCommentsRunOverLines()
{
    Script script(QStringLiteral("buy.close,0>ma,5,0 /* off\nsale.close,0<ma,10,0\nstill */ buy.close,0>ma,5,0\nclose"));
    const QTextDocument &document = script.document;

    QCOMPARE(colourAt(document, 0, columnOf(document, 0, QStringLiteral("close"))), QColor(Qt::darkBlue));
    QCOMPARE(colourAt(document, 0, columnOf(document, 0, QStringLiteral("off"))), QColor(Qt::red));
    QCOMPARE(colourAt(document, 1, 0), QColor(Qt::red));
    QCOMPARE(colourAt(document, 1, columnOf(document, 1, QStringLiteral("close"))), QColor(Qt::red));
    QCOMPARE(colourAt(document, 2, columnOf(document, 2, QStringLiteral("*/"))), QColor(Qt::red));
    QCOMPARE(colourAt(document, 2, columnOf(document, 2, QStringLiteral("close"))), QColor(Qt::darkBlue));
    QCOMPARE(colourAt(document, 3, 0), QColor(Qt::darkBlue));

    // Closing the comment earlier recolours the lines after it.
    QTextCursor cursor(script.document.findBlockByNumber(0));
    cursor.movePosition(QTextCursor::EndOfBlock);
    cursor.insertText(QStringLiteral(" */"));
    QCOMPARE(colourAt(document, 1, columnOf(document, 1, QStringLiteral("close"))), QColor(Qt::darkBlue));
}

void HighlighterTest::patternNamesAndConfigurationKeysAreKeywords()
{
    Script script(QStringLiteral("buy.k.旭日东升,0\nconfig.trade.max.count,3"));
    const QTextDocument &document = script.document;
    QCOMPARE(colourAt(document, 0, columnOf(document, 0, QStringLiteral("旭日"))), QColor(Qt::darkBlue));
    QCOMPARE(colourAt(document, 1, columnOf(document, 1, QStringLiteral("max"))), QColor(Qt::darkBlue));
}

QTEST_MAIN(HighlighterTest)
#include "HighlighterTest.moc"
