#pragma once

#include <QByteArray>
#include <QtGlobal>

/// What kind of session the environment says that this is.
namespace SessionKind
{

/// True when the desktop is a Wayland compositor's. X11 programs may run there too, under XWayland.
inline bool isWayland()
{
    return !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") || qgetenv("XDG_SESSION_TYPE") == "wayland";
}

} // namespace SessionKind
