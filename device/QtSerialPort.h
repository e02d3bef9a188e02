#pragma once

#include "device/SerialPort.h"

#include <QSerialPort>

/// The serial port of this system.
class QtSerialPort : public SerialPort
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(QtSerialPort)

public:
    QtSerialPort();

    static std::unique_ptr<SerialPort> create();

    void setPort(const PortDescription &port) override;
    void setBaudRate(qint32 baudRate) override;
    void clearError() override;
    bool open(QIODevice::OpenMode mode) override;
    bool isOpen() const override;
    bool setDataTerminalReady(bool ready) override;
    QByteArray readAll() override;
    qint64 write(const QByteArray &bytes) override;
    bool flush() override;
    void close() override;
    QString errorString() const override;

private:
    QSerialPort m_port;
    bool m_isTrapped = false; // what should be the port's lock cannot be looked at
};
