#pragma once

#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>

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

// Presses the window's button with the given text, as a user would.
inline void pressButton(QWidget *window, const QString &text)
{
    for (QPushButton *button : window->findChildren<QPushButton *>()) {
        if (button->text() == text)
            return QTest::mouseClick(button, Qt::LeftButton);
    }
    QFAIL(qPrintable(QStringLiteral("no button %1").arg(text)));
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
