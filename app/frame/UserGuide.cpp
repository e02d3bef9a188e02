#include "app/frame/UserGuide.h"

#include "app/AppInfo.h"

#include <QDir>
#include <QFileInfo>
#include <QUrl>

QUrl UserGuide::address(const QString &programFolder)
{
    const QDir folder(programFolder);
    for (const auto *place :
         {"user-guide", "../share/doc/veltrix/user-guide", "../../share/doc/veltrix/user-guide"}) {
        const QFileInfo first(folder.filePath(QLatin1String(place) + QLatin1String("/index.html")));
        if (first.isFile() && first.isReadable()) {
            return QUrl::fromLocalFile(QDir::cleanPath(first.absoluteFilePath()));
        }
    }
    return QUrl(QLatin1String(AppInfo::userGuidePage));
}
