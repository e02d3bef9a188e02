#include "engine/platform/linux/DesktopNotification.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantMap>

void DesktopNotification::show(const QString &title, const QString &text)
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("/org/freedesktop/Notifications"),
        QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("Notify"));
    constexpr quint32 replacesNone = 0;
    constexpr int asLongAsUsual = -1;
    message << QStringLiteral("Veltrix") << replacesNone << QStringLiteral("veltrix") << title << text
            << QStringList() << QVariantMap() << asLongAsUsual;
    QDBusConnection::sessionBus().send(message);
}
