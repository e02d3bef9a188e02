#include "device/SystemPorts.h"
#include "device/TcpSerialPort.h"

namespace
{

class NoPorts final : public PortLister
{
public:
    QVector<PortDescription> availablePorts() override { return {}; }
    std::optional<qint64> changeStamp() override { return 0; } // nothing ever changes
};

} // namespace

namespace systemports
{

const bool exist = false;

std::unique_ptr<PortLister> createLister()
{
    return std::make_unique<NoPorts>();
}

SerialPortFactory portFactory()
{
    // A port that has no connection, and is never opened: none is ever found.
    return [] { return std::make_unique<TcpSerialPort>(std::make_shared<QTcpSocket>()); };
}

} // namespace systemports
