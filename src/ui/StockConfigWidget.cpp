#include "StockConfigWidget.h"

#include "ScriptEditor.h"

#include "market/SafeFile.h"
#include "market/TextFile.h"
#include "script/StrategyConfig.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QTextEdit>

namespace {

const QString kConfigFile = QStringLiteral("config.conf");

} // namespace

StockConfigWidget::StockConfigWidget(QWidget *parent)
    : QDialog(parent), m_editor(new ScriptEditor(this)), m_warnings(new QLabel(this))
{
    setWindowTitle(QStringLiteral("基础配置"));
    setFixedSize(360, 240);

    auto *layout = new QGridLayout(this);
    layout->addWidget(m_editor, 0, 0, 1, 2);
    // Beside the button: what is questionable in the text, seen before it is saved.
    m_warnings->setObjectName(QStringLiteral("configWarnings"));
    m_warnings->setMinimumWidth(0);
    m_warnings->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_warnings->setStyleSheet(QStringLiteral("color: #8a4b00"));
    layout->addWidget(m_warnings, 1, 0);
    connect(m_editor, &ScriptEditor::warningsChanged, this, &StockConfigWidget::showWarnings);
    auto *ok = new QPushButton(QStringLiteral("确定"), this);
    layout->addWidget(ok, 1, 1);
    connect(ok, SIGNAL(clicked()), this, SLOT(onConfig()));

    // An empty file counts as none: the user gets the defaults to start from.
    m_editor->setPlainText(StrategyConfig::configFileText(kConfigFile));
    m_editor->checkWarnings();
}

void StockConfigWidget::showWarnings()
{
    QStringList lines;
    for (const ScriptWarning &warning : m_editor->warnings())
        lines << QStringLiteral("第%1行: %2").arg(warning.line).arg(warning.text);
    m_warnings->setText(
        lines.isEmpty() ? QString() : QStringLiteral("%1条提示 · %2").arg(lines.size()).arg(lines.first()));
    m_warnings->setToolTip(lines.join(QLatin1Char('\n')));
}

QTextEdit *StockConfigWidget::editor() const { return m_editor; }

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
