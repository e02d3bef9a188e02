#pragma once

#include "device/PortFinder.h"
#include "device/SerialPort.h"

#include <QString>

#include <memory>

/// The two halves of the device link's access to the outside: where the device is, and how it is opened.
struct DevicePorts {
    std::unique_ptr<PortFinder> finder;
    SerialPortFactory create;

    /// @p port is what the user named as the device's port. The address of a virtual device
    /// (TcpAddress::parse) is then the only place that is looked at; everything else is as in PortFinder.
    static DevicePorts at(const QString &port);

    /// False in a build with VELTRIX_SERIAL_PORT off, which reaches virtual devices only.
    static bool includeSerialPorts();
};
