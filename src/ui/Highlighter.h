#pragma once

#include <QRegularExpression>
#include <QSyntaxHighlighter>
#include <QTextCharFormat>

#include <vector>

// Colours strategy scripts: the language's own names, Qt-like class names,
// "//" comments, quoted text, names before "(", and "/* */" comments that
// may run over several lines.
class Highlighter : public QSyntaxHighlighter {
    Q_OBJECT
public:
    // Each keyword is used as a pattern as it stands.
    Highlighter(QTextDocument *document, const QStringList &keywords);

protected:
    void highlightBlock(const QString &text) override;

private:
    struct Rule {
        QRegularExpression pattern;
        QTextCharFormat format;
    };

    void addRule(const QString &pattern, const QTextCharFormat &format);
    void applyRule(const Rule &rule, const QString &text);
    void highlightComments(const QString &text);

    std::vector<Rule> m_rules;
    QRegularExpression m_commentStart{QStringLiteral("/\\*")};
    QRegularExpression m_commentEnd{QStringLiteral("\\*/")};
    QTextCharFormat m_commentFormat;
};
