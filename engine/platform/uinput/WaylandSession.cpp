#include "engine/platform/uinput/WaylandSession.h"

#include "engine/platform/PlatformLog.h"

#include <algorithm>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>
#include <wayland-client.h>
#include <xdg-output-unstable-v1-client-protocol.h>

namespace
{

constexpr int firstRetryMs = 1000;
constexpr int lastRetryMs = 30000;

struct Output {
    quint32 name = 0;
    wl_output *output = nullptr;
    zxdg_output_v1 *logical = nullptr;
    QPoint place; // on the desktop; the compositor's own word on it comes from the extension, later
    QSize pixels;
    int scale = 1;
    bool turned = false;
    QPoint logicalPlace;
    QSize logicalSize;

    QRect geometry() const
    {
        if (!logicalSize.isEmpty()) {
            return {logicalPlace, logicalSize};
        }
        const QSize size = pixels / scale;
        return {place, turned ? size.transposed() : size};
    }
};

/// The text of a keymap that came as a file.
QByteArray readKeymap(int file, quint32 size)
{
    QByteArray text;
    void *memory = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
    if (memory != MAP_FAILED) {
        text = QByteArray(static_cast<const char *>(memory), int(size));
        munmap(memory, size);
    }
    const int end = text.indexOf('\0');
    return end < 0 ? text : text.left(end);
}

} // namespace

struct WaylandSession::Connection {
    Connection(WaylandSession &session, wl_display *display);
    ~Connection();
    Q_DISABLE_COPY_MOVE(Connection)

    void add(quint32 name, const QByteArray &interface, quint32 version);
    void remove(quint32 name);
    void bindLogical(Output &output);
    void releaseKeyboard();

    WaylandSession &session;
    wl_display *display;
    wl_registry *registry;
    wl_seat *seat = nullptr;
    quint32 seatName = 0;
    wl_keyboard *keyboard = nullptr;
    zxdg_output_manager_v1 *manager = nullptr;
    std::vector<std::unique_ptr<Output>> outputs; // the library holds their addresses
};

// The library calls back with the object that was named when its listener was added. Every function of a
// listener has to be there.
namespace
{

using Connection = WaylandSession::Connection;

const wl_keyboard_listener keyboardListener = {
    [](void *data, wl_keyboard *, uint32_t format, int32_t file, uint32_t size) {
        const QByteArray text =
            format == WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1 ? readKeymap(file, size) : QByteArray();
        close(file);
        if (!text.isEmpty()) {
            Q_EMIT static_cast<Connection *>(data)->session.keymapChanged(text);
        }
    },
    // None of these comes to a client without a window.
    [](void *, wl_keyboard *, uint32_t, wl_surface *, wl_array *) {},
    [](void *, wl_keyboard *, uint32_t, wl_surface *) {},
    [](void *, wl_keyboard *, uint32_t, uint32_t, uint32_t, uint32_t) {},
    [](void *, wl_keyboard *, uint32_t, uint32_t, uint32_t, uint32_t, uint32_t) {},
    [](void *, wl_keyboard *, int32_t, int32_t) {},
};

const wl_seat_listener seatListener = {
    [](void *data, wl_seat *seat, uint32_t capabilities) {
        auto *connection = static_cast<Connection *>(data);
        const bool hasKeyboard = (capabilities & WL_SEAT_CAPABILITY_KEYBOARD) != 0;
        if (hasKeyboard && !connection->keyboard) {
            connection->keyboard = wl_seat_get_keyboard(seat);
            wl_keyboard_add_listener(connection->keyboard, &keyboardListener, data);
        } else if (!hasKeyboard) {
            connection->releaseKeyboard();
        }
    },
    [](void *, wl_seat *, const char *) {},
};

const wl_output_listener outputListener = {
    [](void *data, wl_output *, int32_t x, int32_t y, int32_t, int32_t, int32_t, const char *, const char *,
       int32_t transform) {
        auto *output = static_cast<Output *>(data);
        output->place = {x, y};
        output->turned = (transform & 1) != 0; // by 90 or 270 degrees
    },
    [](void *data, wl_output *, uint32_t flags, int32_t width, int32_t height, int32_t) {
        if ((flags & WL_OUTPUT_MODE_CURRENT) != 0) {
            static_cast<Output *>(data)->pixels = {width, height};
        }
    },
    [](void *, wl_output *) {},
    [](void *data, wl_output *, int32_t scale) { static_cast<Output *>(data)->scale = std::max(1, scale); },
    [](void *, wl_output *, const char *) {},
    [](void *, wl_output *, const char *) {},
};

const zxdg_output_v1_listener logicalListener = {
    [](void *data, zxdg_output_v1 *, int32_t x, int32_t y) {
        static_cast<Output *>(data)->logicalPlace = {x, y};
    },
    [](void *data, zxdg_output_v1 *, int32_t width, int32_t height) {
        static_cast<Output *>(data)->logicalSize = {width, height};
    },
    [](void *, zxdg_output_v1 *) {},
    [](void *, zxdg_output_v1 *, const char *) {},
    [](void *, zxdg_output_v1 *, const char *) {},
};

const wl_registry_listener registryListener = {
    [](void *data, wl_registry *, uint32_t name, const char *interface, uint32_t version) {
        static_cast<Connection *>(data)->add(name, interface, version);
    },
    [](void *data, wl_registry *, uint32_t name) { static_cast<Connection *>(data)->remove(name); },
};

} // namespace

WaylandSession::Connection::Connection(WaylandSession &owner, wl_display *connected)
    : session(owner)
    , display(connected)
    , registry(wl_display_get_registry(connected))
{
    wl_registry_add_listener(registry, &registryListener, this);
    wl_display_flush(display);
}

WaylandSession::Connection::~Connection()
{
    for (const auto &output : outputs) {
        if (output->logical) {
            zxdg_output_v1_destroy(output->logical);
        }
        wl_output_destroy(output->output);
    }
    if (keyboard) {
        wl_keyboard_destroy(keyboard);
    }
    if (seat) {
        wl_seat_destroy(seat);
    }
    if (manager) {
        zxdg_output_manager_v1_destroy(manager);
    }
    wl_registry_destroy(registry);
    wl_display_disconnect(display);
}

void WaylandSession::Connection::add(quint32 name, const QByteArray &interface, quint32 version)
{
    if (interface == wl_seat_interface.name && !seat) {
        seatName = name;
        seat = static_cast<wl_seat *>(
            wl_registry_bind(registry, name, &wl_seat_interface, std::min(version, 5U)));
        wl_seat_add_listener(seat, &seatListener, this);
    } else if (interface == wl_output_interface.name) {
        outputs.push_back(std::make_unique<Output>());
        Output &output = *outputs.back();
        output.name = name;
        output.output = static_cast<wl_output *>(
            wl_registry_bind(registry, name, &wl_output_interface, std::min(version, 2U)));
        wl_output_add_listener(output.output, &outputListener, &output);
        bindLogical(output);
    } else if (interface == zxdg_output_manager_v1_interface.name) {
        manager = static_cast<zxdg_output_manager_v1 *>(
            wl_registry_bind(registry, name, &zxdg_output_manager_v1_interface, std::min(version, 3U)));
        for (const auto &output : outputs) {
            bindLogical(*output);
        }
    }
}

void WaylandSession::Connection::bindLogical(Output &output)
{
    if (manager && !output.logical) {
        output.logical = zxdg_output_manager_v1_get_xdg_output(manager, output.output);
        zxdg_output_v1_add_listener(output.logical, &logicalListener, &output);
    }
}

void WaylandSession::Connection::remove(quint32 name)
{
    const auto gone = std::find_if(outputs.begin(), outputs.end(),
                                   [name](const auto &output) { return output->name == name; });
    if (gone != outputs.end()) {
        if ((*gone)->logical) {
            zxdg_output_v1_destroy((*gone)->logical);
        }
        wl_output_destroy((*gone)->output);
        outputs.erase(gone);
    } else if (seat && name == seatName) {
        releaseKeyboard();
        wl_seat_destroy(seat);
        seat = nullptr;
    }
}

void WaylandSession::Connection::releaseKeyboard()
{
    if (keyboard) {
        wl_keyboard_destroy(keyboard);
        keyboard = nullptr;
    }
}

WaylandSession::WaylandSession()
{
    m_retry.setSingleShot(true);
    m_retry.setInterval(firstRetryMs);
    connect(&m_retry, &QTimer::timeout, this, &WaylandSession::open);
}

WaylandSession::~WaylandSession() = default;

bool WaylandSession::open()
{
    wl_display *display = wl_display_connect(nullptr);
    if (!display) {
        m_retry.start();
        m_retry.setInterval(std::min(m_retry.interval() * 2, lastRetryMs));
        return false;
    }
    m_retry.setInterval(firstRetryMs);
    m_connection = std::make_unique<Connection>(*this, display);
    m_notifier = std::make_unique<QSocketNotifier>(wl_display_get_fd(display), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &WaylandSession::read);
    return true;
}

void WaylandSession::read()
{
    wl_display *display = m_connection->display;
    while (wl_display_prepare_read(display) != 0) {
        wl_display_dispatch_pending(display);
    }
    wl_display_read_events(display);
    wl_display_dispatch_pending(display);
    wl_display_flush(display);
    if (wl_display_get_error(display) != 0) {
        lose();
    }
}

void WaylandSession::lose()
{
    qCWarning(lcPlatform, "the connection to the compositor is lost");
    m_lastScreens = screens();
    m_notifier->setEnabled(false);
    m_notifier.release()->deleteLater(); // its signal is being handled
    m_connection.reset();
    m_retry.start();
}

QVector<QRect> WaylandSession::screens() const
{
    if (!m_connection) {
        return m_lastScreens;
    }
    QVector<QRect> screens;
    for (const auto &output : m_connection->outputs) {
        const QRect geometry = output->geometry();
        if (geometry.isEmpty()) {
            return {};
        }
        screens.append(geometry);
    }
    return screens;
}
