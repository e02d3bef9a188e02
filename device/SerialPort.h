#pragma once

#include "device/PortLister.h"

#include <QByteArray>
#include <QIODevice>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>

/// A serial port, cut at the calls that the device link makes, so that a test can stand in for the hardware.
///
/// Lives on one thread. The real one is QtSerialPort.
class SerialPort : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SerialPort)

public:
    enum class Error {
        None,
        DeviceNotFound,
        Permission,
        Open,
        NotOpen,
        Write,
        Read,
        Resource,
        UnsupportedOperation,
        Timeout,
        Unknown,
    };
    Q_ENUM(Error)

    SerialPort() = default;

    /// Chooses the port that open() will open.
    virtual void setPort(const PortDescription &port) = 0;
    /// Bits per second, for both directions.
    virtual void setBaudRate(qint32 baudRate) = 0;
    virtual void clearError() = 0;
    /// False on failure, errorString() then says why.
    virtual bool open(QIODevice::OpenMode mode) = 0;
    virtual bool isOpen() const = 0;
    /// False where the port has no such line (a pseudo terminal, for example).
    virtual bool setDataTerminalReady(bool ready) = 0;
    /// What has been received so far, possibly nothing. Never waits.
    virtual QByteArray readAll() = 0;
    /// Queues the bytes for writing. The number of bytes taken, -1 on failure. Never waits.
    virtual qint64 write(const QByteArray &bytes) = 0;
    virtual bool flush() = 0;
    virtual void close() = 0;
    virtual QString errorString() const = 0;

Q_SIGNALS:
    void readyRead();
    /// Any error, also while the port is closed. Can come again and again until the port is closed, and comes
    /// from inside the port's own work: do not close or delete the port from a slot that is connected
    /// directly.
    void errorOccurred(SerialPort::Error error);
};

/// Makes a new, closed port. Never null.
using SerialPortFactory = std::function<std::unique_ptr<SerialPort>()>;
