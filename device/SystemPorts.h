#pragma once

#include "device/PortLister.h"
#include "device/SerialPort.h"

#include <memory>

/// The system's serial ports; the build chooses between the toolkit's and none (VELTRIX_SERIAL_PORT).
namespace systemports
{

extern const bool exist;

/// Never null.
std::unique_ptr<PortLister> createLister();

SerialPortFactory portFactory();

} // namespace systemports
