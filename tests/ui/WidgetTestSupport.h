#pragma once

#include "../TestSupport.h"
#include "ui/OrvelStockMsgBox.h"

#include <QtTest>
#include <QtWidgets>

#include <functional>

// Modal windows block the test that opens them. A watcher polls for the
// active modal window and hands each new one to a handler, which inspects
// it and closes it; the test goes on once exec() returns.
class ModalWatcher : public QObject {
public:
    explicit ModalWatcher(std::function<void(QWidget *modal)> handler) : m_handler(std::move(handler))
    {
        connect(&m_timer, &QTimer::timeout, this, &ModalWatcher::poll);
        m_timer.start(20);
    }
    int seen() const { return m_seen; }

private:
    void poll()
    {
        QWidget *modal = QApplication::activeModalWidget();
        if (!modal || modal == m_current)
            return;
        m_current = modal;
        ++m_seen;
        m_handler(modal);
        if (m_current && m_current->isVisible()) // a failed check must not leave the test waiting
            m_current->close();
    }

    std::function<void(QWidget *)> m_handler;
    QTimer m_timer;
    QPointer<QWidget> m_current;
    int m_seen = 0;
};

inline QPushButton *button(const QWidget *window, const QString &text)
{
    for (QPushButton *button : window->findChildren<QPushButton *>()) {
        if (button->text() == text)
            return button;
    }
    return nullptr;
}

// Presses the window's button with the given text, as a user would.
inline void pressButton(QWidget *window, const QString &text)
{
    QPushButton *found = button(window, text);
    QVERIFY2(found, qPrintable(QStringLiteral("no button %1").arg(text)));
    QTest::mouseClick(found, Qt::LeftButton);
}

// A handler that notes each of the program's message boxes as "title|text".
inline std::function<void(QWidget *)> noteBoxes(QStringList &boxes)
{
    return [&boxes](QWidget *modal) {
        auto *box = qobject_cast<OrvelStockMsgBox *>(modal);
        QVERIFY(box);
        boxes << box->windowTitle() + QLatin1Char('|') + box->text();
    };
}

// A handler that notes each question's text and answers it with `answer` as it is then.
inline std::function<void(QWidget *)> answerQuestions(QStringList &asked, const QString &answer)
{
    return [&asked, &answer](QWidget *modal) {
        auto *question = qobject_cast<QMessageBox *>(modal);
        QVERIFY(question);
        asked << question->text();
        pressButton(question, answer);
    };
}

inline QAction *menuAction(QMainWindow &window, const QString &menu, const QString &text)
{
    for (QAction *top : window.menuBar()->actions()) {
        for (QAction *action : top->text() == menu ? top->menu()->actions() : QList<QAction *>()) {
            if (action->text() == text)
                return action;
        }
    }
    return nullptr;
}

template <class Widget>
Widget *child(const QWidget &window, const char *name)
{
    return window.findChild<Widget *>(QString::fromLatin1(name));
}

// Clicks the row's first cell as a user would, and again as a double-click if `twice`.
inline void clickRow(QTableView *table, int row, bool twice = false)
{
    const QPoint at = table->visualRect(table->model()->index(row, 0)).center();
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, at);
    if (twice)
        QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, at);
}

// The texts of one column, in the order shown.
inline QStringList columnTexts(const QAbstractItemModel *model, int column)
{
    QStringList texts;
    for (int row = 0; row < model->rowCount(); ++row)
        texts << model->index(row, column).data().toString();
    return texts;
}

// The bundled data, or the shared synthetic market where the tree has none.
inline QString sampleMarket()
{
    const QString bundled = QStringLiteral(ORVEL_SOURCE_DIR "/data");
    return QDir(bundled).isEmpty(QDir::Files) ? sharedDir() + QStringLiteral("/data/synthetic-market")
                                              : bundled;
}
