#include "OrvelStockMsgBox.h"

#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

OrvelStockMsgBox::OrvelStockMsgBox(const QString &title, const QString &text, QWidget *parent)
    : QDialog(parent), m_label(new QLabel(text, this))
{
    setWindowIcon(QIcon(QStringLiteral(":logo/orvel.png")));
    setWindowTitle(title);
    setFixedSize(240, 150);

    auto *layout = new QGridLayout(this);
    m_label->setWordWrap(true);
    m_label->setOpenExternalLinks(true);
    layout->addWidget(m_label, 0, 0, 1, 3);

    auto *line = new QFrame(this);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    layout->addWidget(line, 1, 0, 1, 3);

    auto *ok = new QPushButton(QStringLiteral("确定"), this);
    layout->addWidget(ok, 2, 1);
    connect(ok, SIGNAL(clicked()), this, SLOT(close()));
}

QString OrvelStockMsgBox::text() const { return m_label->text(); }
