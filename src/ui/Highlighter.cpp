#include "Highlighter.h"

namespace {

enum BlockState { OutsideComment = 0, InsideComment = 1 };

QTextCharFormat makeFormat(const QColor &colour, bool bold = false, bool italic = false)
{
    QTextCharFormat result;
    result.setForeground(colour);
    if (bold)
        result.setFontWeight(QFont::Bold);
    result.setFontItalic(italic);
    return result;
}

} // namespace

Highlighter::Highlighter(QTextDocument *document, const QStringList &keywords)
    : QSyntaxHighlighter(document), m_commentFormat(makeFormat(Qt::red))
{
    // Later rules win where they overlap, so the order matters.
    const QTextCharFormat keyword = makeFormat(Qt::darkBlue, true);
    for (const QString &pattern : keywords)
        addRule(pattern, keyword);
    addRule(QStringLiteral("\\bQ[A-Za-z]+\\b"), makeFormat(Qt::darkMagenta, true));
    addRule(QStringLiteral("//[^\n]*"), makeFormat(Qt::red));
    addRule(QStringLiteral("\".*\""), makeFormat(Qt::darkGreen));
    addRule(QStringLiteral("\\b[A-Za-z0-9_]+(?=\\()"), makeFormat(Qt::blue, false, true));
}

void Highlighter::addRule(const QString &pattern, const QTextCharFormat &format)
{
    m_rules.push_back({QRegularExpression(pattern), format});
}

void Highlighter::highlightBlock(const QString &text)
{
    for (const Rule &rule : m_rules)
        applyRule(rule, text);
    highlightComments(text);
}

void Highlighter::applyRule(const Rule &rule, const QString &text)
{
    qsizetype from = 0;
    while (from <= text.size()) {
        const QRegularExpressionMatch match = rule.pattern.match(text, from);
        if (!match.hasMatch())
            return;
        setFormat(int(match.capturedStart()), int(match.capturedLength()), rule.format);
        // An empty keyword matches nothing worth colouring; step on so it
        // cannot match at the same place for ever.
        from = match.capturedEnd() + (match.capturedLength() == 0 ? 1 : 0);
    }
}

void Highlighter::highlightComments(const QString &text)
{
    setCurrentBlockState(OutsideComment);
    qsizetype start = 0;
    if (previousBlockState() != InsideComment) {
        start = text.indexOf(m_commentStart);
        if (start < 0)
            return;
    }
    while (start >= 0) {
        const QRegularExpressionMatch end = m_commentEnd.match(text, start);
        qsizetype length;
        if (!end.hasMatch()) {
            setCurrentBlockState(InsideComment);
            length = text.size() - start;
        } else {
            length = end.capturedEnd() - start;
        }
        setFormat(int(start), int(length), m_commentFormat);
        start = text.indexOf(m_commentStart, start + length);
    }
}
