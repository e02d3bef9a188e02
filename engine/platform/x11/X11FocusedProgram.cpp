#include "engine/platform/x11/X11FocusedProgram.h"

#include "engine/platform/PlatformLog.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <xcb/xcb.h>
#include <xcb/xproto.h>

namespace
{

// Of what a stranger may have put into a property.
constexpr unsigned longestClass = 256; // words of four bytes
constexpr int mostWindows = 4096;      // of the list of all
constexpr int mostAsked = 32;          // of these, from the topmost on

constexpr int frameMs = 16;

// What xcb hands out is given back with free().
template <typename T>
std::unique_ptr<T, decltype(&std::free)> owned(T *reply)
{
    return {reply, &std::free};
}

// The second of the two names that the property holds, each with a zero behind it: the class. Without one,
// the first.
QString className(const QByteArray &names)
{
    const QList<QByteArray> parts = names.split('\0');
    const QByteArray name = parts.size() > 1 && !parts.at(1).isEmpty() ? parts.at(1) : parts.value(0);
    const QString text = QString::fromUtf8(name);
    return text.contains(QChar::ReplacementCharacter) ? QString::fromLatin1(name) : text;
}

} // namespace

void X11FocusedProgram::Closer::operator()(xcb_connection_t *connection) const
{
    xcb_disconnect(connection);
}

X11FocusedProgram::X11FocusedProgram()
{
    m_rest.setSingleShot(true);
    m_rest.setInterval(frameMs);
    connect(&m_rest, &QTimer::timeout, this, &X11FocusedProgram::readEvents);
}

X11FocusedProgram::~X11FocusedProgram() = default;

void X11FocusedProgram::setWatched(bool watched)
{
    if (!watched) {
        close();
    } else if (!m_connection) {
        const QString problem = open();
        if (!problem.isEmpty()) {
            close();
            qCWarning(lcPlatform).noquote() << "the program in front is not watched:" << problem;
        }
    }
}

void X11FocusedProgram::close()
{
    m_rest.stop();
    m_notifier.reset();
    m_connection.reset();
    m_active = 0;
    m_changed = false;
}

QString X11FocusedProgram::open()
{
    int screen = 0;
    m_connection.reset(xcb_connect(nullptr, &screen));
    xcb_connection_t *connection = m_connection.get();
    if (xcb_connection_has_error(connection)) {
        return QStringLiteral("cannot connect to display ") + qEnvironmentVariable("DISPLAY");
    }
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screen > 0 && screens.rem > 1; --screen) {
        xcb_screen_next(&screens);
    }
    m_root = screens.data->root;
    m_activeProperty = atom("_NET_ACTIVE_WINDOW");
    m_stackProperty = atom("_NET_CLIENT_LIST_STACKING");
    m_processProperty = atom("_NET_WM_PID");
    m_kindProperty = atom("_NET_WM_WINDOW_TYPE");
    m_frameKinds = {atom("_NET_WM_WINDOW_TYPE_DESKTOP"), atom("_NET_WM_WINDOW_TYPE_DOCK")};

    const quint32 events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection, m_root, XCB_CW_EVENT_MASK, &events);
    m_notifier =
        std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(connection), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &X11FocusedProgram::readEvents);
    m_active = activeWindow();
    if (!tellOf(m_active)) {
        tellOfTheOneBefore();
    }
    readEvents();
    return QString();
}

quint32 X11FocusedProgram::atom(const char *name) const
{
    xcb_connection_t *connection = m_connection.get();
    const auto cookie = xcb_intern_atom(connection, 0, static_cast<uint16_t>(std::strlen(name)), name);
    const auto reply = owned(xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : quint32(XCB_ATOM_NONE);
}

void X11FocusedProgram::readEvents()
{
    m_changed = takeEvents() || m_changed;
    if (m_changed && !m_rest.isActive()) {
        m_changed = false;
        m_rest.start(); // its end also finds the events that a reply has brought along: the notifier does not
        look();
    }
    if (m_connection && xcb_connection_has_error(m_connection.get())) {
        close();
        qCWarning(lcPlatform, "the program in front is not watched any more: the X server has gone away");
    }
}

void X11FocusedProgram::look()
{
    const Window active = activeWindow();
    if (active != std::exchange(m_active, active)) {
        tellOf(active);
    }
}

// Whether the active window may be another one now. Reads once: more may come in than can be taken.
bool X11FocusedProgram::takeEvents() const
{
    bool changed = false;
    for (auto event = owned(xcb_poll_for_event(m_connection.get())); event;
         event = owned(xcb_poll_for_queued_event(m_connection.get()))) {
        constexpr quint8 withoutSender = 0x7F;
        const auto *property = reinterpret_cast<const xcb_property_notify_event_t *>(event.get());
        changed = changed || ((event->response_type & withoutSender) == XCB_PROPERTY_NOTIFY &&
                              property->atom == m_activeProperty);
    }
    return changed;
}

// False when the window is none that a user works in.
bool X11FocusedProgram::tellOf(Window window)
{
    if (window == 0 || isOwn(window) || isOfTheDesktop(window)) {
        return false;
    }
    const Program program = Program::called(className(property(window, XCB_ATOM_WM_CLASS, 8, longestClass)));
    if (program.id.isEmpty()) {
        return false;
    }
    Q_EMIT focused(program);
    return true;
}

// The active window is ours, or none is: what lies highest of the others was active before, most likely.
void X11FocusedProgram::tellOfTheOneBefore()
{
    const QVector<Window> all = ids(m_root, m_stackProperty, mostWindows);
    const int end = std::max(0, all.size() - mostAsked);
    for (int i = all.size() - 1; i >= end; --i) {
        if (tellOf(all.at(i))) {
            return;
        }
    }
}

bool X11FocusedProgram::isOwn(Window window) const
{
    return ids(window, m_processProperty, 1).value(0) == quint32(QCoreApplication::applicationPid());
}

// Panels and the desktop are on the way from one program to another.
bool X11FocusedProgram::isOfTheDesktop(Window window) const
{
    constexpr int mostKinds = 16;
    const QVector<quint32> kinds = ids(window, m_kindProperty, mostKinds);
    return std::find_first_of(kinds.begin(), kinds.end(), m_frameKinds.begin(), m_frameKinds.end()) !=
           kinds.end();
}

X11FocusedProgram::Window X11FocusedProgram::activeWindow() const
{
    return ids(m_root, m_activeProperty, 1).value(0);
}

QVector<quint32> X11FocusedProgram::ids(Window window, quint32 property, int most) const
{
    const QByteArray bytes = this->property(window, property, 32, static_cast<unsigned>(most));
    QVector<quint32> found(bytes.size() / int(sizeof(quint32)));
    std::memcpy(found.data(), bytes.constData(), size_t(found.size()) * sizeof(quint32));
    return found;
}

// Empty when the window is gone, and for a property of units of another size.
QByteArray X11FocusedProgram::property(Window window, quint32 property, int bits, unsigned words) const
{
    xcb_connection_t *connection = m_connection.get();
    const auto cookie =
        xcb_get_property(connection, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, words);
    xcb_generic_error_t *error = nullptr; // asked for, so that it is no event
    const auto reply = owned(xcb_get_property_reply(connection, cookie, &error));
    std::free(error);
    if (!reply || reply->format != bits) {
        return QByteArray();
    }
    return QByteArray(static_cast<const char *>(xcb_get_property_value(reply.get())),
                      xcb_get_property_value_length(reply.get()));
}
