#include "engine/platform/uinput/LibEvdev.h"

#include <cerrno>
#include <fcntl.h>
#include <libevdev/libevdev-uinput.h>
#include <libevdev/libevdev.h>
#include <unistd.h>

namespace
{

struct DescriptionFree {
    void operator()(libevdev *description) const { libevdev_free(description); }
};
using Description = std::unique_ptr<libevdev, DescriptionFree>;

Description describe(const DeviceDescription &wanted)
{
    Description description(libevdev_new());
    libevdev *device = description.get();
    libevdev_set_name(device, wanted.name.constData());
    libevdev_set_id_bustype(device, BUS_VIRTUAL);
    const auto enable = [device](unsigned type, const QVector<quint16> &codes) {
        for (const quint16 code : codes) {
            libevdev_enable_event_code(device, type, code, nullptr);
        }
    };
    enable(EV_KEY, wanted.keys);
    enable(EV_REL, wanted.relative);
    enable(EV_LED, wanted.leds);
    if (wanted.absoluteMaximum > 0) {
        input_absinfo range{};
        range.maximum = wanted.absoluteMaximum;
        libevdev_enable_event_code(device, EV_ABS, ABS_X, &range);
        libevdev_enable_event_code(device, EV_ABS, ABS_Y, &range);
    }
    return description;
}

} // namespace

LibEvdev::Device::~Device()
{
    libevdev_uinput_destroy(uinput);
    close(descriptor);
}

int LibEvdev::create(const DeviceDescription &description)
{
    const int file = open(path, O_RDWR | O_CLOEXEC | O_NONBLOCK);
    if (file < 0) {
        return -errno;
    }
    auto device = std::make_unique<Device>(file);
    const int error = libevdev_uinput_create_from_device(describe(description).get(), file, &device->uinput);
    if (error != 0) {
        return error;
    }
    m_devices[file] = std::move(device);
    return file;
}

void LibEvdev::destroy(int device)
{
    m_devices.erase(device);
}

int LibEvdev::write(int device, quint16 type, quint16 code, qint32 value)
{
    const auto found = m_devices.find(device);
    return found == m_devices.end() ? -ENODEV
                                    : libevdev_uinput_write_event(found->second->uinput, type, code, value);
}

bool LibEvdev::read(int device, Event &event)
{
    input_event raw{};
    if (m_devices.count(device) == 0 || ::read(device, &raw, sizeof raw) != ssize_t(sizeof raw)) {
        return false;
    }
    event = {raw.type, raw.code, raw.value};
    return true;
}

QByteArray LibEvdev::node(int device) const
{
    const auto found = m_devices.find(device);
    return found == m_devices.end() ? QByteArray()
                                    : QByteArray(libevdev_uinput_get_devnode(found->second->uinput));
}
