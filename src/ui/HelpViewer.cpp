#include "HelpViewer.h"

#include <QDesktopServices>
#include <QLabel>
#include <QTextBrowser>
#include <QVBoxLayout>

HelpViewer::HelpViewer(HelpPages::Page page, QWidget *parent)
    : QDialog(parent), m_browser(new QTextBrowser(this))
{
    setWindowTitle(page == HelpPages::Help ? QStringLiteral("帮助") : QStringLiteral("疑问"));
    resize(720, 560);
    m_browser->setObjectName(QStringLiteral("helpBrowser"));
    // The pages link to each other; addresses outside them go to the browser.
    m_browser->setOpenExternalLinks(true);
    m_browser->setSource(QUrl(page == HelpPages::Help ? QStringLiteral("qrc:/qrc/readme.htm")
                                                      : QStringLiteral("qrc:/qrc/faq.htm")));
    connect(m_browser, &QTextBrowser::sourceChanged, this, [this](const QUrl &url) {
        setWindowTitle(url.fileName() == QLatin1String("faq.htm") ? QStringLiteral("疑问")
                                                                  : QStringLiteral("帮助"));
    });

    auto *open = new QLabel(QStringLiteral("<a href=\"#browser\">在浏览器中打开</a>"), this);
    open->setObjectName(QStringLiteral("openInBrowser"));
    open->setAlignment(Qt::AlignRight);
    connect(open, &QLabel::linkActivated, this, &HelpViewer::openInBrowser);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_browser);
    layout->addWidget(open);
}

// The page shown now, copied out of the program where the browser can read it.
void HelpViewer::openInBrowser()
{
    const bool faq = m_browser->source().fileName() == QLatin1String("faq.htm");
    QDesktopServices::openUrl(HelpPages::url(faq ? HelpPages::Questions : HelpPages::Help));
}
