#include "engine/platform/uinput/UinputDevices.h"

#include "engine/platform/PlatformLog.h"

#include <QFile>

#include <cerrno>
#include <cstring>
#include <linux/input-event-codes.h>
#include <unistd.h>

namespace
{

constexpr UinputKernel::Event report{EV_SYN, SYN_REPORT, 0};

QVector<quint16> allKeys()
{
    QVector<quint16> keys;
    for (quint16 key = KEY_ESC; key <= UinputDevices::lastKey; ++key) {
        keys.append(key);
    }
    return keys;
}

/// What the desktop takes for a keyboard, a mouse, and a mouse that knows its place: the last needs a button
/// too.
QVector<DeviceDescription> descriptions()
{
    return {{"Veltrix keyboard", allKeys(), {}, {LED_NUML, LED_CAPSL, LED_SCROLLL}, 0},
            {"Veltrix pointer", {BTN_LEFT}, {REL_X, REL_Y}, {}, 0},
            {"Veltrix pointer jumps", {BTN_LEFT}, {}, {}, UinputDevices::places}};
}

QString errorText(int error)
{
    return QString::fromLocal8Bit(std::strerror(-error));
}

} // namespace

UinputDevices::UinputDevices(UinputKernel &kernel, const QString &path)
    : m_kernel(kernel)
    , m_path(path)
{
}

UinputDevices::~UinputDevices()
{
    close();
}

bool UinputDevices::open(QString &problem)
{
    if (const int error = create(); error < 0) {
        problem = QStringLiteral("%1: %2").arg(m_path, errorText(error));
        return false;
    }
    m_rights = std::make_unique<PathWatch>(m_path, [this] { checkRights(); });
    return true;
}

int UinputDevices::create()
{
    const QVector<DeviceDescription> wanted = descriptions();
    for (int role = 0; role < Roles; ++role) {
        const int device = m_kernel.create(wanted[role]);
        if (device < 0) {
            close();
            return device;
        }
        m_devices[size_t(role)] = device;
    }
    m_lights =
        std::make_unique<QSocketNotifier>(m_kernel.descriptor(m_devices[Keyboard]), QSocketNotifier::Read);
    connect(m_lights.get(), &QSocketNotifier::activated, this, &UinputDevices::readLights);
    return 0;
}

void UinputDevices::close()
{
    m_lights.reset();
    for (int &device : m_devices) {
        if (device >= 0) {
            m_kernel.destroy(device);
        }
        device = -1;
    }
}

void UinputDevices::lose(int error)
{
    qCWarning(lcPlatform).noquote() << "the input devices are lost:" << errorText(error);
    close();
    const int again = create();
    if (again < 0) {
        qCWarning(lcPlatform).noquote() << "no input until they can be made again:" << errorText(again);
    }
}

void UinputDevices::checkRights()
{
    const bool allowed = access(QFile::encodeName(m_path).constData(), R_OK | W_OK) == 0;
    if (isOpen() && !allowed) {
        // Whoever sits at the screen now must not get this user's keys.
        qCWarning(lcPlatform).noquote() << "no input for now: the right to use" << m_path << "is gone";
        close();
    } else if (!isOpen() && allowed && create() == 0) {
        qCInfo(lcPlatform, "the input devices are there again");
    }
}

void UinputDevices::readLights()
{
    const bool before = m_numLock;
    UinputKernel::Event event;
    while (isOpen() && m_kernel.read(m_devices[Keyboard], event)) {
        if (event.type == EV_LED && event.code == LED_NUML) {
            m_numLock = event.value != 0;
        }
    }
    if (m_numLock != before) {
        Q_EMIT numLockChanged();
    }
}

int UinputDevices::write(Role role, const Events &events)
{
    const int device = m_devices[role];
    int error = device >= 0 ? 0 : -ENODEV;
    for (int i = 0; i < events.size() && error == 0; ++i) {
        error = m_kernel.write(device, events[i].type, events[i].code, events[i].value);
    }
    return error == 0 ? m_kernel.write(device, report.type, report.code, report.value) : error;
}

bool UinputDevices::send(Role role, const Events &events)
{
    if (!isOpen()) {
        return false;
    }
    const int error = write(role, events);
    if (error != 0) {
        lose(error);
    }
    return error == 0;
}

void UinputDevices::sendKey(quint16 key, bool down)
{
    const Events event{{EV_KEY, key, down ? 1 : 0}};
    if (!send(Keyboard, event) && down && isOpen()) {
        send(Keyboard, event);
    }
}

void UinputDevices::sendLeftButton(bool down)
{
    const Events event{{EV_KEY, BTN_LEFT, down ? 1 : 0}};
    if (!send(StepPointer, event) && down && isOpen()) {
        send(StepPointer, event);
    }
}

void UinputDevices::moveBy(int dx, int dy)
{
    if (dx != 0 || dy != 0) {
        send(StepPointer, {{EV_REL, REL_X, dx}, {EV_REL, REL_Y, dy}});
    }
}

void UinputDevices::jumpTo(int x, int y)
{
    // The kernel drops a place that is the last one's; the pointer may have been moved away since.
    send(JumpPointer, {{EV_ABS, ABS_X, x > 0 ? x - 1 : x + 1}, {EV_ABS, ABS_Y, y}});
    send(JumpPointer, {{EV_ABS, ABS_X, x}, {EV_ABS, ABS_Y, y}});
}
