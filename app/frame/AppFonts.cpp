#include "app/frame/AppFonts.h"

#include "app/frame/FrameLog.h"

#include <QFile>
#include <QFont>
#include <QFontDatabase>

namespace
{

// One flag for both failures and the whole run: the first line tells what is wrong, the others would only
// repeat it.
void logFirstFailure(const QString &line)
{
    static bool logged = false;
    if (!logged) {
        logged = true;
        qCWarning(lcFrame).noquote() << line;
    }
}

} // namespace

QStringList AppFonts::files()
{
    return {
        QStringLiteral("SourceSansPro-Light.ttf"),
        QStringLiteral("SourceSansPro-Regular.ttf"),
        QStringLiteral("SourceSansPro-ExtraLight.ttf"),
        QStringLiteral("SourceSansPro-Bold.ttf"),
        QStringLiteral("EasyPeople.ttf"),
        QStringLiteral("SourceSansPro-Semibold.ttf"), // the dialogs'
    };
}

void AppFonts::load(const QStringList &names, const QString &folder)
{
    for (const QString &name : names) {
        QFile file(folder + name);
        if (!file.open(QIODevice::ReadOnly)) {
            logFirstFailure(QStringLiteral("couldn't load font ") + name);
        } else if (QFontDatabase::addApplicationFontFromData(file.readAll()) == -1) {
            logFirstFailure(QStringLiteral("couldn't add application font") + name);
        }
    }
    // The menus' font is the system's on Windows only. The signs that the pages' font lacks are in our own.
    QFont::insertSubstitution(QStringLiteral("Segoe UI"), QStringLiteral("Source Sans Pro"));
    for (const QString &family : {QStringLiteral("Segoe UI"), QStringLiteral("Source Sans Pro"),
                                  QStringLiteral("Source Sans Pro ExtraLight")}) {
        QFont::insertSubstitution(family, QStringLiteral("EasyPeople"));
    }
}
