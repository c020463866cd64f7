#include "HelpPages.h"

#include <QDir>
#include <QFile>

namespace HelpPages {
namespace {

// A copy of a resource is read-only like its source; it is made writable so
// that the next copy can replace it.
void copyFresh(const QString &resource, const QString &target)
{
    QFile::remove(target);
    if (QFile::copy(resource, target))
        QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther);
}

} // namespace

QUrl url(Page page)
{
    const QDir dir(QDir::temp().filePath(QStringLiteral("orvel-help")));
    if (!dir.mkpath(QStringLiteral(".")))
        return {};
    // The pages link to each other and show the logo, so all of them go.
    for (const QString &file : {QStringLiteral("readme.htm"), QStringLiteral("faq.htm")})
        copyFresh(QStringLiteral(":qrc/") + file, dir.filePath(file));
    copyFresh(QStringLiteral(":logo/orvel.png"), dir.filePath(QStringLiteral("orvel.png")));

    const QString target =
        dir.filePath(page == Help ? QStringLiteral("readme.htm") : QStringLiteral("faq.htm"));
    return QFile::exists(target) ? QUrl::fromLocalFile(target) : QUrl();
}

} // namespace HelpPages
