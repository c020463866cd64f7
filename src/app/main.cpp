#include "runtime/MessageLog.h"
#include "ui/OrvelAnalyst.h"

#include <QApplication>
#include <QStyleFactory>
#include <QTranslator>

// Text encoding needs no set-up here: the program's literals are UTF-8 and
// its own files are converted from and to GBK where they are read and written.
int main(int argc, char *argv[])
{
    MessageLog::install();
    QApplication app(argc, argv);
    // Where the last script and the window's place are remembered.
    QApplication::setOrganizationName(QStringLiteral("Orvel"));
    QApplication::setApplicationName(QStringLiteral("orvel"));

    // Qt's standard dialogs in Chinese; without the catalogue they stay English.
    QTranslator translator;
    if (translator.load(QStringLiteral(":qrc/qt_zh_CN.qm")))
        QApplication::installTranslator(&translator);

    // The same look on every desktop, whatever the host's theme.
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));

    auto *window = new OrvelAnalyst;
    window->show();
    const int result = QApplication::exec();
    delete window;
    return result;
}
