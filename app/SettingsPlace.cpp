#include "app/SettingsPlace.h"

#include "app/AppLog.h"

#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>

SettingsPlace::SettingsPlace(const QString &organisation, const QString &application)
    : m_file(QStringLiteral("%1/%2/%3.conf")
                 .arg(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation), organisation,
                      application))
{
    const QFileInfo there(m_file);
    if (!there.exists() || there.isFile()) {
        return;
    }
    qCWarning(lcApp).noquote() << "settings are not kept:" << m_file << "is no regular file";
    m_instead = std::make_unique<QTemporaryDir>();
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_instead->path());
}
