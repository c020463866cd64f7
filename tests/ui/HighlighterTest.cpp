// A user types a script and reads its colours.
#include "ui/Highlighter.h"
#include "WidgetTestSupport.h"
#include "ui/OrvelWidget.h"

namespace {

// An editor with the workbench's highlighter, coloured as it is typed.
struct Script {
    explicit Script(const QString &text) : highlighter(editor.document(), OrvelWidget::keywordPatterns())
    {
        editor.setPlainText(text);
    }

    // The format of the first character of `text` on line `line`.
    QTextCharFormat format(int line, const QString &text) const
    {
        const QTextBlock block = editor.document()->findBlockByNumber(line);
        const qsizetype position = block.text().indexOf(text);
        QTextCharFormat result;
        for (const QTextLayout::FormatRange &range : block.layout()->formats()) {
            if (position >= range.start && position < range.start + range.length)
                result = range.format;
        }
        return result;
    }
    QColor colour(int line, const QString &text) const { return format(line, text).foreground().color(); }

    QTextEdit editor;
    Highlighter highlighter;
};

} // namespace

class HighlighterTest : public QObject {
    Q_OBJECT

private slots:
    void namesOfTheLanguageAndCommentsAreColoured();
};

void HighlighterTest::namesOfTheLanguageAndCommentsAreColoured()
{
    const Script script(QStringLiteral(
        "buy.close,0>ma,5,0 // a note\nbuy.k.旭日东升,0\nconfig.trade.max.count,3\n// close,0"));
    QCOMPARE(script.colour(0, "close"), QColor(Qt::darkBlue));
    QCOMPARE(script.format(0, "close").fontWeight(), int(QFont::Bold));
    QCOMPARE(script.colour(0, "ma,"), QColor(Qt::darkBlue));
    QVERIFY(!script.format(0, "buy").hasProperty(QTextFormat::ForegroundBrush));
    QCOMPARE(script.colour(0, "// a"), QColor(Qt::red));
    QCOMPARE(script.colour(0, "note"), QColor(Qt::red));
    QCOMPARE(script.colour(3, "close"), QColor(Qt::red)); // a name in a comment is comment
    // The vocabulary holds the pattern names and the configuration keys too.
    QCOMPARE(script.colour(1, "旭日"), QColor(Qt::darkBlue));
    QCOMPARE(script.colour(2, "max"), QColor(Qt::darkBlue));
}

QTEST_MAIN(HighlighterTest)
#include "HighlighterTest.moc"
