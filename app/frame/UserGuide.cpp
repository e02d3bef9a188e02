#include "app/frame/UserGuide.h"

#include "app/frame/AppInfo.h"

#include <QFileInfo>
#include <QLocale>
#include <QUrl>

namespace
{

/// The page that came with the program, in the language of its texts where there is one, or @p onTheWeb.
QUrl page(const QString &programFolder, const QString &name, const char *onTheWeb)
{
    const QString guide = programFolder + QStringLiteral("/user-guide/");
    const QString language = QLocale().name().section(QLatin1Char('_'), 0, 0) + QLatin1Char('/');
    for (const QString &folder : {language, QString()}) {
        const QFileInfo file(guide + folder + name);
        if (file.isFile() && file.isReadable()) {
            return QUrl::fromLocalFile(file.absoluteFilePath());
        }
    }
    return QUrl(QLatin1String(onTheWeb));
}

// The domain that is reserved for addresses that lead nowhere.
bool leadsNowhere(const QUrl &address)
{
    return address.host().endsWith(QLatin1String(".invalid"));
}

} // namespace

QUrl UserGuide::address(const QString &programFolder)
{
    return page(programFolder, QStringLiteral("index.html"), AppInfo::userGuidePage);
}

QUrl UserGuide::help(const QString &programFolder)
{
    const QUrl maker{QLatin1String(AppInfo::supportPage)};
    return leadsNowhere(maker) ? troubleshooting(programFolder, {}) : maker;
}

QUrl UserGuide::troubleshooting(const QString &programFolder, const QString &section)
{
    QUrl address = page(programFolder, QStringLiteral("troubleshooting.html"), AppInfo::supportPage);
    if (address.isLocalFile() && !section.isEmpty()) {
        address.setFragment(section);
    }
    return address;
}
