#include "tests/e2e/support/Desk.h"

#include <algorithm>
#include <mutex>

namespace
{

/// Xlib's set-up of a connection is not made for several threads at once.
std::mutex connecting;

} // namespace

Desk::Desk(Midi midi, const QVector<QRect> &screens)
    : m_midi(midi)
    , m_screens(screens)
{
    if (screens.size() > 1) {
        m_monitors = std::make_unique<MonitorServer>(screens);
    } else {
        const QSize size = screens.isEmpty() ? QSize(1920, 1080) : screens.first().size();
        XServer::Options options;
        options.screens = QStringList{QStringLiteral("%1x%2").arg(size.width()).arg(size.height())};
        m_server = std::make_unique<XServer>(options);
    }
    if (midi == Midi::With) {
        m_jack = std::make_unique<JackServer>();
    }
    if (!error().isEmpty()) {
        return;
    }
    {
        const std::lock_guard<std::mutex> lock(connecting);
        m_devices = std::make_unique<XTestDevices>(display());
    }
    QStringList arguments;
    if (midi == Midi::With) {
        arguments.append(QStringLiteral("--midi"));
    }
    m_listener =
        std::make_unique<Child>(QStringLiteral(LISTENER), arguments, environment(), Child::Output::Standard);
    if (!m_devices->isReady()) {
        m_error = QStringLiteral("no connection to the X server");
    } else if (!m_listener->waitForLine(QStringLiteral("ready"), 10000)) {
        m_error = QStringLiteral("the listener is not ready");
    }
}

bool Desk::canShow(const QVector<QRect> &screens)
{
    return std::all_of(screens.begin(), screens.end(),
                       [](const QRect &screen) { return screen.x() >= 0 && screen.y() >= 0; });
}

QString Desk::error() const
{
    QString serverError = m_monitors ? m_monitors->error() : m_server->error();
    if (!serverError.isEmpty()) {
        return serverError;
    }
    return m_jack && !m_jack->isRunning() ? m_jack->error() : m_error;
}

QProcessEnvironment Desk::environment() const
{
    QProcessEnvironment environment = m_jack ? m_jack->environment() : JackServer::environmentWithoutServer();
    for (const char *name : {"WAYLAND_DISPLAY", "XDG_SESSION_TYPE", "XAUTHORITY"}) {
        environment.remove(QLatin1String(name));
    }
    environment.insert(QStringLiteral("DISPLAY"), QString::fromLatin1(display()));
    return environment;
}
