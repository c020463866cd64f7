#pragma once

#include <QApplication>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <functional>

// Modal windows block the test that opens them. A watcher polls for the
// active modal window and hands each new one to a handler, which inspects
// it and closes it; the test goes on once exec() returns.
class ModalWatcher : public QObject {
public:
    using Handler = std::function<void(QWidget *modal)>;

    explicit ModalWatcher(Handler handler) : m_handler(std::move(handler))
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
    }

    Handler m_handler;
    QTimer m_timer;
    QPointer<QWidget> m_current;
    int m_seen = 0;
};

// Presses the window's button with the given text, as a user would.
inline void pressButton(QWidget *window, const QString &text)
{
    for (QPushButton *button : window->findChildren<QPushButton *>()) {
        if (button->text() == text) {
            QTest::mouseClick(button, Qt::LeftButton);
            return;
        }
    }
    QFAIL(qPrintable(QStringLiteral("no button %1").arg(text)));
}
