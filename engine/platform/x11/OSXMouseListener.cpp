#include "engine/platform/x11/OSXMouseListener.h"

#include "engine/platform/PlatformLog.h"
#include "engine/platform/x11/XTestSources.h"

#include <X11/Xlib.h>
#include <X11/extensions/XInput2.h>
#include <array>

namespace
{

// What a report may lag behind the hand: the knob's pause of 250 ms counts from the last one. A mouse that
// moves a thousand times a second is then looked at a hundred times.
constexpr int gatherMs = 10;

void select(Display *display, Window root, int devices, int event, bool on)
{
    std::array<unsigned char, XIMaskLen(XI_LASTEVENT)> bits{};
    if (on) {
        bits[size_t(event) / 8] = static_cast<unsigned char>(1U << (unsigned(event) % 8));
    }
    XIEventMask mask{devices, int(bits.size()), bits.data()};
    XISelectEvents(display, root, &mask, 1);
}

} // namespace

OSXMouseListener::OSXMouseListener(QObject *parent)
    : QObject(parent)
{
    m_gathering.setSingleShot(true);
    m_gathering.setTimerType(Qt::PreciseTimer);
    m_gathering.setInterval(gatherMs);
    connect(&m_gathering, &QTimer::timeout, this, [this] {
        m_notifier->setEnabled(true);
        readEvents();
    });
}

OSXMouseListener::~OSXMouseListener() = default;

void OSXMouseListener::doWork()
{
    if (isWatching()) {
        return;
    }
    Q_EMIT workRequested();
    const QString problem = open();
    if (!problem.isEmpty()) {
        stop(problem);
        return;
    }
    Q_EMIT valueChanged(QStringLiteral("watching"));
}

QString OSXMouseListener::open()
{
    QString problem;
    m_connection = X11Connection::open(problem);
    if (!m_connection) {
        return problem;
    }
    Display *display = m_connection->display();
    int event = 0;
    int error = 0;
    // A client of an older version gets no raw motion while another one has grabbed the pointer.
    int major = 2;
    int minor = 2;
    if (!XQueryExtension(display, "XInputExtension", &m_opcode, &event, &error) ||
        XIQueryVersion(display, &major, &minor) != Success || (major == 2 && minor < 2)) {
        return QStringLiteral("the X server has no XInput 2.2");
    }
    select(display, m_connection->root(), XIAllDevices, XI_HierarchyChanged, true);
    m_synthesised = XTestSources::all(display);
    select(display, m_connection->root(), XIAllMasterDevices, XI_RawMotion, true);
    m_connection->flush();
    m_notifier = std::make_unique<QSocketNotifier>(ConnectionNumber(display), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &OSXMouseListener::readEvents);
    readEvents();
    return QString();
}

void OSXMouseListener::readEvents()
{
    if (!isWatching()) {
        return;
    }
    Display *display = m_connection->display();
    m_moved = false;
    while (!m_connection->isLost() && XPending(display) > 0) {
        XEvent event;
        XNextEvent(display, &event);
        if (event.type == GenericEvent && event.xcookie.extension == m_opcode &&
            XGetEventData(display, &event.xcookie)) {
            handle(&event.xcookie);
            XFreeEventData(display, &event.xcookie);
        }
    }
    if (m_connection->isLost()) {
        stop(QStringLiteral("the X server has gone away"));
    } else if (m_moved) {
        m_notifier->setEnabled(false);
        m_gathering.start();
        Q_EMIT userMovedMouse();
    }
}

void OSXMouseListener::handle(void *genericEvent)
{
    const auto *cookie = static_cast<XGenericEventCookie *>(genericEvent);
    if (cookie->evtype == XI_HierarchyChanged) {
        m_synthesised = XTestSources::all(m_connection->display());
        return;
    }
    const auto *motion = static_cast<const XIRawEvent *>(cookie->data);
    if (cookie->evtype == XI_RawMotion && !m_synthesised.contains(motion->sourceid)) {
        m_moved = true;
    }
}

void OSXMouseListener::stop(const QString &reason)
{
    m_gathering.stop();
    m_notifier.reset();
    m_connection.reset();
    qCWarning(lcPlatform).noquote() << "the user's own mouse is not watched:" << reason;
    Q_EMIT valueChanged(QLatin1String("not watching: ") + reason);
    Q_EMIT finished();
}
