#include "OrvelAboutDlg.h"

#include "OrvelTitle.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

OrvelAboutDlg::OrvelAboutDlg(QWidget *parent) : QDialog(parent)
{
    setWindowTitle(QStringLiteral("关于"));
    setWindowIcon(QIcon(QStringLiteral(":logo/orvel.png")));

    auto *logo = new QLabel(this);
    logo->setPixmap(QPixmap(QStringLiteral(":logo/orvel.png")));
    auto *text = new QLabel(QStringLiteral("<b>%1</b><br>版本 %2<br><br>A股日K线策略回测工具。"
                                           "<br>回测结果仅供研究参考，不构成投资建议。")
                                .arg(orvelWindowTitle(), orvelVersion()),
                            this);
    text->setWordWrap(true);

    auto *ok = new QPushButton(QStringLiteral("确定"), this);
    connect(ok, SIGNAL(clicked()), this, SLOT(accept()));

    auto *top = new QHBoxLayout;
    top->addWidget(logo, 0, Qt::AlignTop);
    top->addWidget(text, 1);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(ok, 0, Qt::AlignRight);
    setMinimumWidth(320);
}
