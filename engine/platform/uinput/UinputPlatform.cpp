#include "engine/platform/Platform.h"
#include "engine/platform/PlatformLog.h"
#include "engine/platform/linux/SessionKind.h"
#include "engine/platform/uinput/LibEvdev.h"
#include "engine/platform/uinput/SessionKeymap.h"
#include "engine/platform/uinput/UinputAppearance.h"
#include "engine/platform/uinput/UinputDevices.h"
#include "engine/platform/uinput/UinputInjector.h"
#include "engine/platform/uinput/UinputPointer.h"
#include "engine/platform/uinput/WaylandSession.h"

#include <QCoreApplication>

namespace
{

/// What injector and pointer share; it lives as long as the last of them.
struct Parts {
    LibEvdev kernel;
    UinputDevices devices{kernel, QString::fromLatin1(LibEvdev::path)};
    SessionKeymap keymap;
    WaylandSession session;
};

std::unique_ptr<QObject> watchNoMouse(const std::function<void()> &)
{
    qCInfo(lcPlatform, "the user's own mouse is not watched: this session shows it to no program");
    return nullptr;
}

bool addInput(Platform &platform)
{
    const auto parts = std::make_shared<Parts>();
    if (!parts->devices.open(platform.input)) {
        platform.input += QLatin1String(" (the user guide says under Wayland what helps)");
        platform.notice = QCoreApplication::translate(
            "Platform", "Keys reach no program. The user guide says under Wayland what helps.");
        return false;
    }
    QObject::connect(&parts->session, &WaylandSession::keymapChanged, &parts->keymap,
                     &SessionKeymap::setText);
    const bool isWayland = SessionKind::isWayland() && parts->session.open();

    const std::shared_ptr<UinputDevices> devices(parts, &parts->devices);
    const std::shared_ptr<SessionKeymap> keymap(parts, &parts->keymap);
    platform.injector = std::make_unique<UinputInjector>(devices, keymap);
    platform.pointer =
        std::make_unique<UinputPointer>(devices, [session = &parts->session] { return session->screens(); });
    platform.appearance = std::make_unique<UinputAppearance>();
    platform.watchMouse = watchNoMouse;
    platform.input =
        QStringLiteral("uinput: %1, %2")
            .arg(QString::fromLatin1(LibEvdev::path),
                 isWayland ? QStringLiteral("a Wayland session") : QStringLiteral("no compositor"));
    return true;
}

} // namespace

Backend uinputBackend()
{
    return {"uinput", SessionKind::isWayland, nullptr, nullptr, addInput};
}
