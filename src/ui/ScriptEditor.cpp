#include "ScriptEditor.h"

#include <QAbstractTextDocumentLayout>
#include <QHelpEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>
#include <QToolTip>

namespace {

const QColor kErrorBand(255, 200, 200);
const QColor kErrorNumber(180, 0, 0);
const QColor kWarningLine(230, 120, 0);
// Long enough not to flicker while typing, short enough to feel immediate.
constexpr int kWarningPauseMs = 400;

} // namespace

class LineNumberArea : public QWidget {
public:
    explicit LineNumberArea(ScriptEditor *editor) : QWidget(editor), m_editor(editor)
    {
        setObjectName(QStringLiteral("lineNumbers"));
    }
    QSize sizeHint() const override { return {m_editor->lineNumberAreaWidth(), 0}; }

protected:
    void paintEvent(QPaintEvent *event) override { m_editor->paintLineNumbers(event); }

private:
    ScriptEditor *m_editor;
};

ScriptEditor::ScriptEditor(QWidget *parent) : QTextEdit(parent), m_lineNumbers(new LineNumberArea(this))
{
    setAcceptRichText(false);
    connect(document(), &QTextDocument::blockCountChanged, this, &ScriptEditor::updateMargin);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, m_lineNumbers, qOverload<>(&QWidget::update));
    connect(document()->documentLayout(), &QAbstractTextDocumentLayout::update, m_lineNumbers,
            qOverload<>(&QWidget::update));
    connect(this, &QTextEdit::cursorPositionChanged, this, &ScriptEditor::updateSelections);
    // A mark is about the text it was made for; any edit makes it stale.
    connect(this, &QTextEdit::textChanged, this, &ScriptEditor::clearErrorLine);
    m_warningTimer.setSingleShot(true);
    m_warningTimer.setInterval(kWarningPauseMs);
    connect(this, &QTextEdit::textChanged, &m_warningTimer, qOverload<>(&QTimer::start));
    connect(&m_warningTimer, &QTimer::timeout, this, &ScriptEditor::checkWarnings);
    updateMargin();
}

int ScriptEditor::lineNumberAreaWidth() const
{
    const int digits = int(QString::number(std::max(1, document()->blockCount())).size());
    return 8 + fontMetrics().horizontalAdvance(QLatin1Char('9')) * std::max(2, digits);
}

void ScriptEditor::updateMargin()
{
    setViewportMargins(lineNumberAreaWidth(), 0, 0, 0);
    m_lineNumbers->update();
}

void ScriptEditor::resizeEvent(QResizeEvent *event)
{
    QTextEdit::resizeEvent(event);
    const QRect area = contentsRect();
    m_lineNumbers->setGeometry(area.left(), area.top(), lineNumberAreaWidth(), area.height());
}

// One number per line of the script, at the top of its first wrapped row.
void ScriptEditor::paintLineNumbers(QPaintEvent *event)
{
    QPainter painter(m_lineNumbers);
    painter.fillRect(event->rect(), palette().color(QPalette::Window));
    const int scrolled = verticalScrollBar()->value();
    const int height = m_lineNumbers->height();
    const int width = m_lineNumbers->width() - 4;
    QAbstractTextDocumentLayout *layout = document()->documentLayout();
    for (QTextBlock block = cursorForPosition(QPoint(0, 0)).block(); block.isValid(); block = block.next()) {
        const QRectF rect = layout->blockBoundingRect(block);
        const int top = int(rect.top()) - scrolled;
        if (top > height)
            break;
        const int number = block.blockNumber() + 1;
        const bool marked = number == m_errorLine;
        QFont font = this->font();
        font.setBold(marked);
        painter.setFont(font);
        painter.setPen(marked ? kErrorNumber : palette().color(QPalette::WindowText));
        painter.drawText(0, top, width, fontMetrics().height(), Qt::AlignRight, QString::number(number));
    }
}

void ScriptEditor::markErrorLine(int line, const QString &reason)
{
    const QTextBlock block = document()->findBlockByNumber(line - 1);
    if (!block.isValid())
        return;
    QTextCursor cursor(block);
    setTextCursor(cursor);
    ensureCursorVisible();
    m_errorLine = line;
    m_errorReason = reason;
    updateSelections();
    m_lineNumbers->update();
}

void ScriptEditor::clearErrorLine()
{
    if (m_errorLine == 0)
        return;
    m_errorLine = 0;
    m_errorReason.clear();
    updateSelections();
    m_lineNumbers->update();
}

// A lighter band across the cursor's line; the error line's band is red and
// stays where the cursor goes.
void ScriptEditor::updateSelections()
{
    QList<ExtraSelection> selections;
    ExtraSelection currentLine;
    currentLine.format.setBackground(QColor(Qt::gray).lighter(130));
    currentLine.format.setProperty(QTextFormat::FullWidthSelection, true);
    currentLine.cursor = textCursor();
    currentLine.cursor.clearSelection();
    selections << currentLine;
    if (m_errorLine > 0) {
        ExtraSelection error;
        error.format.setBackground(kErrorBand);
        error.format.setProperty(QTextFormat::FullWidthSelection, true);
        error.cursor = QTextCursor(document()->findBlockByNumber(m_errorLine - 1));
        selections << error;
    }
    for (const ScriptWarning &warning : m_warnings) {
        ExtraSelection underline;
        underline.format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
        underline.format.setUnderlineColor(kWarningLine);
        const QTextBlock block = document()->findBlockByNumber(warning.line - 1);
        underline.cursor = QTextCursor(block);
        underline.cursor.setPosition(block.position() + warning.column);
        underline.cursor.setPosition(std::min(block.position() + warning.column + warning.length,
                                              block.position() + block.length() - 1),
                                     QTextCursor::KeepAnchor);
        selections << underline;
    }
    setExtraSelections(selections);
}

const std::vector<ScriptWarning> &ScriptEditor::checkWarnings()
{
    m_warningTimer.stop();
    m_warnings = findScriptWarnings(toPlainText());
    updateSelections();
    emit warningsChanged();
    return m_warnings;
}

QString ScriptEditor::toolTipAt(const QPoint &position) const
{
    const QTextCursor cursor = cursorForPosition(position);
    const int line = cursor.blockNumber() + 1;
    const int column = cursor.positionInBlock();
    QStringList texts;
    if (line == m_errorLine)
        texts << m_errorReason;
    for (const ScriptWarning &warning : m_warnings) {
        if (warning.line == line && column >= warning.column && column <= warning.column + warning.length)
            texts << warning.text;
    }
    return texts.join(QLatin1Char('\n'));
}

bool ScriptEditor::viewportEvent(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QTextEdit::viewportEvent(event);
    auto *help = static_cast<QHelpEvent *>(event);
    const QString text = toolTipAt(help->pos());
    if (text.isEmpty())
        QToolTip::hideText();
    else
        QToolTip::showText(help->globalPos(), text, viewport());
    return true;
}
