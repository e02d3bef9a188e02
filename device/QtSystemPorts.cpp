#include "device/QtPortLister.h"
#include "device/QtSerialPort.h"
#include "device/SystemPorts.h"

namespace systemports
{

const bool exist = true;

std::unique_ptr<PortLister> createLister()
{
    return std::make_unique<QtPortLister>();
}

SerialPortFactory portFactory()
{
    return &QtSerialPort::create;
}

} // namespace systemports
