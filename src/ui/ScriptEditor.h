#pragma once

#include "script/ScriptWarnings.h"

#include <QTextEdit>
#include <QTimer>

// The script editor of the workbench: line numbers in a margin (long lines
// wrap, so lines cannot be counted by eye), a band on the cursor's line, the
// line a compile stopped at, marked until the text changes, and a wavy
// underline under every warning, found again shortly after typing stops.
// Hovering over a mark shows its reason.
class ScriptEditor : public QTextEdit {
    Q_OBJECT
public:
    explicit ScriptEditor(QWidget *parent = nullptr);

    // Moves the cursor to the 1-based `line` and marks it.
    void markErrorLine(int line, const QString &reason);
    // The marked line, or 0.
    int errorLine() const { return m_errorLine; }

    // The warnings of the text as it is now (found at once, not waiting for the pause).
    const std::vector<ScriptWarning> &checkWarnings();
    const std::vector<ScriptWarning> &warnings() const { return m_warnings; }

    // The text shown on hovering over `position` (viewport coordinates).
    QString toolTipAt(const QPoint &position) const;

signals:
    void warningsChanged();

public:
    QWidget *lineNumberArea() const { return m_lineNumbers; }
    int lineNumberAreaWidth() const;

protected:
    void resizeEvent(QResizeEvent *event) override;
    bool viewportEvent(QEvent *event) override;

private:
    friend class LineNumberArea;
    void paintLineNumbers(QPaintEvent *event);
    void updateMargin();
    void updateSelections();
    void clearErrorLine();

    QWidget *m_lineNumbers;
    int m_errorLine = 0;
    QString m_errorReason;
    std::vector<ScriptWarning> m_warnings;
    QTimer m_warningTimer;
};
