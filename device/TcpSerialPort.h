#pragma once

#include "device/SerialPort.h"

#include <QTcpSocket>

#include <memory>

/// A connection to a virtual device in the place of a serial port.
///
/// The connection is made by TcpPortLister; opening takes it over, closing ends it. What the device has sent
/// between the two is not lost. Baud rate and the DTR line mean nothing here.
class TcpSerialPort final : public SerialPort
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(TcpSerialPort)

public:
    explicit TcpSerialPort(std::shared_ptr<QTcpSocket> socket);

    void setPort(const PortDescription &) override {}
    void setBaudRate(qint32) override {}
    void clearError() override {}
    bool open(QIODevice::OpenMode mode) override;
    /// Until close(), also when the device has gone: what it sent last can still be read.
    bool isOpen() const override { return m_open; }
    bool setDataTerminalReady(bool) override { return false; }
    QByteArray readAll() override;
    qint64 write(const QByteArray &bytes) override;
    bool flush() override;
    void close() override;
    QString errorString() const override;

private:
    std::shared_ptr<QTcpSocket> m_socket;
    bool m_open = false;
};
