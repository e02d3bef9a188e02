#include "tools/simulator/VirtualDevice.h"

#include "tools/simulator/DevicePort.h"
#include "tools/simulator/WireEncoder.h"

namespace simulator
{

VirtualDevice::VirtualDevice(DevicePort &port, QObject *parent)
    : QObject(parent)
    , m_port(port)
{
}

bool VirtualDevice::isPlugged() const
{
    return m_port.isPlugged();
}

bool VirtualDevice::isOpened() const
{
    return m_port.isOpened();
}

bool VirtualDevice::isDelivered() const
{
    return m_port.isDelivered();
}

void VirtualDevice::setButton(int button, bool down)
{
    m_down.at(static_cast<size_t>(button)) = down;
    send(wire::button(button, down));
}

void VirtualDevice::sendKnob(char type)
{
    switch (type) {
    case 'D':
        m_touched = true;
        break;
    case 'U':
        m_touched = false;
        break;
    case 'L':
        --m_position;
        break;
    case 'R':
        ++m_position;
        break;
    default:
        break;
    }
    send(wire::knob(type));
}

void VirtualDevice::sendCount(int value)
{
    send(wire::count(value));
}

void VirtualDevice::sendRaw(const QByteArray &bytes)
{
    send(bytes);
}

bool VirtualDevice::setPlugged(bool plugged)
{
    if (plugged == m_port.isPlugged()) {
        return true;
    }
    bool done = true;
    if (plugged) {
        done = m_port.plug();
    } else {
        m_port.unplug();
    }
    Q_EMIT changed();
    return done;
}

void VirtualDevice::send(const QByteArray &message)
{
    m_port.send(message);
    Q_EMIT reported(message);
    Q_EMIT changed();
}

} // namespace simulator
