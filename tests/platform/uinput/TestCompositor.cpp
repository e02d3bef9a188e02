#include "tests/platform/uinput/TestCompositor.h"

#include <sys/mman.h>
#include <unistd.h>
#include <wayland-server.h>
#include <xdg-output-unstable-v1-server-protocol.h>

namespace
{

template <typename Object>
Object *from(void *data)
{
    return static_cast<Object *>(data);
}

TestCompositor *compositorOf(wl_resource *resource)
{
    return static_cast<TestCompositor *>(wl_resource_get_user_data(resource));
}

void destroyResource(wl_client *, wl_resource *resource)
{
    wl_resource_destroy(resource);
}

void forgetResource(wl_resource *resource)
{
    if (TestCompositor *compositor = compositorOf(resource)) {
        compositor->forget(resource);
    }
}

const struct wl_keyboard_interface keyboardRequests = {destroyResource};

const struct wl_seat_interface seatRequests = {
    [](wl_client *, wl_resource *, uint32_t) {},
    [](wl_client *client, wl_resource *seat, uint32_t id) {
        compositorOf(seat)->bindKeyboard(client, seat, id);
    },
    [](wl_client *, wl_resource *, uint32_t) {},
    destroyResource,
};

const struct wl_output_interface outputRequests = {destroyResource};
const struct zxdg_output_v1_interface logicalRequests = {destroyResource};

const struct zxdg_output_manager_v1_interface managerRequests = {
    destroyResource,
    [](wl_client *client, wl_resource *manager, uint32_t id, wl_resource *output) {
        wl_resource *logical =
            wl_resource_create(client, &zxdg_output_v1_interface, wl_resource_get_version(manager), id);
        wl_resource_set_implementation(logical, &logicalRequests, nullptr, nullptr);
        const QRect geometry = from<TestCompositor::Output>(wl_resource_get_user_data(output))->geometry;
        zxdg_output_v1_send_logical_position(logical, geometry.x(), geometry.y());
        zxdg_output_v1_send_logical_size(logical, geometry.width(), geometry.height());
    },
};

} // namespace

TestCompositor::TestCompositor(const QByteArray &socket, const QByteArray &keymap,
                               const QVector<QRect> &outputs, Option option)
    : m_display(wl_display_create())
    , m_keymap(keymap)
    , m_hasKeyboard(option != WithoutKeyboard)
{
    wl_display_add_socket(m_display, socket.constData());
    wl_global_create(m_display, &wl_seat_interface, 7, this,
                     [](wl_client *client, void *self, uint32_t version, uint32_t id) {
                         from<TestCompositor>(self)->bindSeat(client, version, id);
                     });
    for (const QRect &output : outputs) {
        addOutput(output);
    }
    if (option != WithoutLogicalOutputs) {
        wl_global_create(m_display, &zxdg_output_manager_v1_interface, 3, this,
                         [](wl_client *client, void *self, uint32_t version, uint32_t id) {
                             from<TestCompositor>(self)->bindManager(client, version, id);
                         });
    }
    wl_event_loop *loop = wl_display_get_event_loop(m_display);
    m_notifier = std::make_unique<QSocketNotifier>(wl_event_loop_get_fd(loop), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this, loop] {
        wl_event_loop_dispatch(loop, 0);
        flush();
    });
}

TestCompositor::~TestCompositor()
{
    m_notifier.reset();
    wl_display_destroy_clients(m_display);
    wl_display_destroy(m_display);
}

void TestCompositor::flush()
{
    wl_display_flush_clients(m_display);
}

void TestCompositor::bindSeat(wl_client *client, quint32 version, quint32 id)
{
    wl_resource *seat = wl_resource_create(client, &wl_seat_interface, int(version), id);
    wl_resource_set_implementation(seat, &seatRequests, this, forgetResource);
    m_seats.append(seat);
    wl_seat_send_capabilities(seat, m_hasKeyboard ? WL_SEAT_CAPABILITY_KEYBOARD : 0);
}

void TestCompositor::bindKeyboard(wl_client *client, wl_resource *seat, quint32 id)
{
    wl_resource *keyboard =
        wl_resource_create(client, &wl_keyboard_interface, wl_resource_get_version(seat), id);
    wl_resource_set_implementation(keyboard, &keyboardRequests, this, forgetResource);
    m_keyboards.append(keyboard);
    sendKeymap(keyboard);
}

void TestCompositor::forget(wl_resource *resource)
{
    m_seats.removeAll(resource);
    m_keyboards.removeAll(resource);
}

void TestCompositor::sendKeymap(wl_resource *keyboard)
{
    const int file = memfd_create("keymap", MFD_CLOEXEC);
    const ssize_t written = write(file, m_keymap.constData(), size_t(m_keymap.size()) + 1);
    wl_keyboard_send_keymap(keyboard, WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, file, uint32_t(written));
    close(file);
}

void TestCompositor::setKeymap(const QByteArray &keymap)
{
    m_keymap = keymap;
    for (wl_resource *keyboard : qAsConst(m_keyboards)) {
        sendKeymap(keyboard);
    }
    flush();
}

void TestCompositor::setHasKeyboard(bool has)
{
    m_hasKeyboard = has;
    for (wl_resource *seat : qAsConst(m_seats)) {
        wl_seat_send_capabilities(seat, has ? WL_SEAT_CAPABILITY_KEYBOARD : 0);
    }
    flush();
}

void TestCompositor::addOutput(const QRect &geometry)
{
    m_outputs.push_back(std::make_unique<Output>(Output{this, geometry, nullptr}));
    Output &output = *m_outputs.back();
    output.global = wl_global_create(m_display, &wl_output_interface, 2, &output,
                                     [](wl_client *client, void *data, uint32_t version, uint32_t id) {
                                         auto *bound = from<Output>(data);
                                         bound->compositor->bindOutput(client, version, id, *bound);
                                     });
    flush();
}

void TestCompositor::removeLastOutput()
{
    wl_global_destroy(m_outputs.back()->global);
    m_outputs.pop_back();
    flush();
}

// Twice the pixels at scale 2: what counts on the desktop is the same.
void TestCompositor::bindOutput(wl_client *client, quint32 version, quint32 id, Output &output)
{
    wl_resource *resource = wl_resource_create(client, &wl_output_interface, int(version), id);
    wl_resource_set_implementation(resource, &outputRequests, &output, nullptr);
    const QRect &geometry = output.geometry;
    wl_output_send_geometry(resource, geometry.x(), geometry.y(), 0, 0, WL_OUTPUT_SUBPIXEL_UNKNOWN, "maker",
                            "model", WL_OUTPUT_TRANSFORM_NORMAL);
    wl_output_send_mode(resource, WL_OUTPUT_MODE_CURRENT, geometry.width() * 2, geometry.height() * 2, 60000);
    wl_output_send_scale(resource, 2);
    wl_output_send_done(resource);
}

void TestCompositor::bindManager(wl_client *client, quint32 version, quint32 id)
{
    wl_resource *manager = wl_resource_create(client, &zxdg_output_manager_v1_interface, int(version), id);
    wl_resource_set_implementation(manager, &managerRequests, this, nullptr);
}
