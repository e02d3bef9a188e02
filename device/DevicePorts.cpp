#include "device/DevicePorts.h"

#include "device/SystemPorts.h"
#include "device/TcpPortLister.h"
#include "device/TcpSerialPort.h"

DevicePorts DevicePorts::at(const QString &port)
{
    if (const auto address = TcpAddress::parse(port)) {
        const auto socket = std::make_shared<QTcpSocket>();
        return {std::make_unique<PortFinder>(std::make_unique<TcpPortLister>(*address, socket), port),
                [socket] { return std::make_unique<TcpSerialPort>(socket); }};
    }
    return {std::make_unique<PortFinder>(systemports::createLister(), port), systemports::portFactory()};
}

bool DevicePorts::includeSerialPorts()
{
    return systemports::exist;
}
