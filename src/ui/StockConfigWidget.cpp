#include "StockConfigWidget.h"

#include "market/SafeFile.h"
#include "market/TextFile.h"
#include "script/StrategyConfig.h"

#include <QGridLayout>
#include <QPushButton>
#include <QSpacerItem>
#include <QTextEdit>

namespace {

const QString kConfigFile = QStringLiteral("config.conf");

} // namespace

StockConfigWidget::StockConfigWidget(QWidget *parent) : QDialog(parent), m_editor(new QTextEdit(this))
{
    setWindowTitle(QStringLiteral("基础配置"));
    setFixedSize(360, 240);

    auto *layout = new QGridLayout(this);
    layout->addWidget(m_editor, 0, 0, 1, 2);
    layout->addItem(new QSpacerItem(308, 20, QSizePolicy::Expanding, QSizePolicy::Minimum), 1, 0);
    auto *ok = new QPushButton(QStringLiteral("确定"), this);
    layout->addWidget(ok, 1, 1);
    connect(ok, SIGNAL(clicked()), this, SLOT(onConfig()));

    // An empty file counts as none: the user gets the defaults to start from.
    m_editor->setPlainText(StrategyConfig::configFileText(kConfigFile));
}

void StockConfigWidget::onConfig()
{
    // Every run reads the file anew, so saving it is all there is to do.
    const QString text = m_editor->toPlainText();
    const QString error = SafeFile::replace(kConfigFile, TextFile::encode(text, TextEncoding::Gbk),
                                            SymlinkRule::FollowToRegularFile);
    if (!error.isEmpty())
        qWarning().noquote() << "cannot write" << kConfigFile << error;
    close();
}
