#include "tests/support/uinput/RecordingKernel.h"

#include <algorithm>
#include <cerrno>
#include <linux/input-event-codes.h>
#include <sys/eventfd.h>
#include <unistd.h>
#include <utility>

RecordingKernel::RecordingKernel() = default;

RecordingKernel::~RecordingKernel()
{
    for (const Device &device : std::as_const(m_devices)) {
        close(device.descriptor);
    }
}

int RecordingKernel::create(const DeviceDescription &description)
{
    if (m_creationError != 0) {
        return -m_creationError;
    }
    Device device;
    device.description = description;
    device.descriptor = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    m_devices.insert(m_next, device);
    return m_next++;
}

void RecordingKernel::destroy(int device)
{
    const Device gone = m_devices.take(device);
    for (const quint16 key : gone.held) {
        m_lines << QStringLiteral("key %1 0").arg(key);
    }
    close(gone.descriptor);
}

int RecordingKernel::write(int number, quint16 type, quint16 code, qint32 value)
{
    const auto device = m_devices.find(number);
    if (const int error = std::exchange(m_writeError, 0)) {
        return -error;
    }
    if (device == m_devices.end()) {
        return -ENODEV;
    }
    const DeviceDescription &able = device->description;
    if (type == EV_KEY && able.keys.contains(code)) {
        const bool isHeld = device->held.contains(code);
        if (isHeld != (value != 0)) {
            m_lines << QStringLiteral("key %1 %2").arg(code).arg(value);
            if (isHeld) {
                device->held.removeOne(code);
            } else {
                device->held.append(code);
            }
        }
    } else if (type == EV_REL && able.relative.contains(code) && value != 0) {
        m_lines << QStringLiteral("rel %1 %2").arg(code).arg(value);
    } else if (type == EV_ABS && able.absoluteMaximum > 0 && code <= ABS_Y) {
        if (device->places.value(code) != value) {
            device->places[code] = value;
            m_lines << QStringLiteral("abs %1 %2").arg(code).arg(value);
        }
    }
    return 0;
}

int RecordingKernel::descriptor(int device) const
{
    return m_devices.value(device).descriptor;
}

bool RecordingKernel::read(int number, Event &event)
{
    const auto device = m_devices.find(number);
    if (device == m_devices.end() || device->fromDesktop.isEmpty()) {
        return false;
    }
    event = device->fromDesktop.takeFirst();
    if (device->fromDesktop.isEmpty()) {
        eventfd_t count = 0;
        eventfd_read(device->descriptor, &count);
    }
    return true;
}

QStringList RecordingKernel::takeLines()
{
    return std::exchange(m_lines, {});
}

QVector<quint16> RecordingKernel::held() const
{
    QVector<quint16> keys;
    for (const Device &device : m_devices) {
        keys += device.held;
    }
    return keys;
}

int RecordingKernel::find(const QByteArray &name) const
{
    const auto found = std::find_if(m_devices.begin(), m_devices.end(), [&name](const Device &device) {
        return device.description.name == name;
    });
    return found == m_devices.end() ? -1 : found.key();
}

void RecordingKernel::writeFromDesktop(int device, const Event &event)
{
    m_devices[device].fromDesktop.append(event);
    eventfd_write(m_devices[device].descriptor, 1);
}
