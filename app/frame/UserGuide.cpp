#include "app/frame/UserGuide.h"

#include "app/frame/AppInfo.h"

#include <QFileInfo>
#include <QUrl>

QUrl UserGuide::address(const QString &programFolder)
{
    const QFileInfo first(programFolder + QStringLiteral("/user-guide/index.html"));
    if (first.isFile() && first.isReadable()) {
        return QUrl::fromLocalFile(first.absoluteFilePath());
    }
    return QUrl(QLatin1String(AppInfo::userGuidePage));
}
