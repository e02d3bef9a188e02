#pragma once

#include <QByteArray>
#include <QString>

namespace simulator
{

/// The cable of the virtual device.
class DevicePort
{
    Q_DISABLE_COPY_MOVE(DevicePort)

public:
    DevicePort() = default;
    virtual ~DevicePort() = default;

    /// Makes the port appear. Returns false, with errorString() set, when it cannot; true when it is there
    /// already.
    virtual bool plug() = 0;

    /// Makes the port vanish; whoever has it open sees a hang-up.
    virtual void unplug() = 0;

    virtual bool isPlugged() const = 0;

    /// Whether a program has the port open.
    virtual bool isOpened() const = 0;

    /// Sends bytes to the program. They are lost when none has the port open, as with a real device.
    virtual void send(const QByteArray &bytes) = 0;

    /// Whether the program has taken everything that was sent; also true while no program has the port open.
    virtual bool isDelivered() const = 0;

    virtual QString errorString() const = 0;
};

} // namespace simulator
