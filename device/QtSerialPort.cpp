#include "device/QtSerialPort.h"

#include "device/DeviceLog.h"
#include "device/PortLocks.h"

namespace
{

SerialPort::Error plainError(QSerialPort::SerialPortError error)
{
    switch (error) {
    case QSerialPort::NoError:
        return SerialPort::Error::None;
    case QSerialPort::DeviceNotFoundError:
        return SerialPort::Error::DeviceNotFound;
    case QSerialPort::PermissionError:
        return SerialPort::Error::Permission;
    case QSerialPort::OpenError:
        return SerialPort::Error::Open;
    case QSerialPort::NotOpenError:
        return SerialPort::Error::NotOpen;
    case QSerialPort::WriteError:
        return SerialPort::Error::Write;
    case QSerialPort::ReadError:
        return SerialPort::Error::Read;
    case QSerialPort::ResourceError:
        return SerialPort::Error::Resource;
    case QSerialPort::UnsupportedOperationError:
        return SerialPort::Error::UnsupportedOperation;
    case QSerialPort::TimeoutError:
        return SerialPort::Error::Timeout;
    default:
        return SerialPort::Error::Unknown;
    }
}

} // namespace

QtSerialPort::QtSerialPort()
{
    connect(&m_port, &QSerialPort::readyRead, this, &SerialPort::readyRead);
    connect(&m_port, &QSerialPort::errorOccurred, this,
            [this](QSerialPort::SerialPortError error) { Q_EMIT errorOccurred(plainError(error)); });
}

std::unique_ptr<SerialPort> QtSerialPort::create()
{
    return std::make_unique<QtSerialPort>();
}

void QtSerialPort::setPort(const PortDescription &port)
{
    m_port.setPortName(port.systemLocation);
}

void QtSerialPort::setBaudRate(qint32 baudRate)
{
    m_port.setBaudRate(baudRate, QSerialPort::AllDirections);
}

void QtSerialPort::clearError()
{
    m_port.clearError();
}

bool QtSerialPort::open(QIODevice::OpenMode mode)
{
    const QString trap = PortLocks::trapFor(m_port.portName());
    m_isTrapped = !trap.isEmpty();
    if (m_isTrapped) {
        qCDebug(lcDevice).noquote() << "somebody has laid a trap:" << trap;
        Q_EMIT errorOccurred(Error::Permission);
        return false;
    }
    return m_port.open(mode);
}

bool QtSerialPort::isOpen() const
{
    return m_port.isOpen();
}

bool QtSerialPort::setDataTerminalReady(bool ready)
{
    return m_port.setDataTerminalReady(ready);
}

QByteArray QtSerialPort::readAll()
{
    return m_port.read(m_port.bytesAvailable()); // readAll() makes room for 16 KiB, for lines of six bytes
}

qint64 QtSerialPort::write(const QByteArray &bytes)
{
    return m_port.write(bytes);
}

bool QtSerialPort::flush()
{
    return m_port.flush();
}

void QtSerialPort::close()
{
    m_port.close();
}

QString QtSerialPort::errorString() const
{
    // The library's own words.
    return m_isTrapped ? QSerialPort::tr("Permission error while locking the device") : m_port.errorString();
}
