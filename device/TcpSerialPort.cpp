#include "device/TcpSerialPort.h"

#include <utility>

TcpSerialPort::TcpSerialPort(std::shared_ptr<QTcpSocket> socket)
    : m_socket(std::move(socket))
{
    connect(m_socket.get(), &QTcpSocket::readyRead, this, [this] {
        if (m_open) {
            Q_EMIT readyRead();
        }
    });
    connect(m_socket.get(), &QTcpSocket::disconnected, this, [this] {
        if (m_open) {
            Q_EMIT errorOccurred(Error::Resource); // what a pulled cable is for a serial port
        }
    });
}

bool TcpSerialPort::open(QIODevice::OpenMode)
{
    m_open = m_socket->state() == QAbstractSocket::ConnectedState;
    if (m_open) {
        m_socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        // Nobody was told of what came before.
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (m_open && m_socket->bytesAvailable() > 0) {
                    Q_EMIT readyRead();
                }
            },
            Qt::QueuedConnection);
    }
    return m_open;
}

QByteArray TcpSerialPort::readAll()
{
    return m_socket->readAll();
}

qint64 TcpSerialPort::write(const QByteArray &bytes)
{
    return m_socket->write(bytes);
}

bool TcpSerialPort::flush()
{
    return m_socket->flush();
}

void TcpSerialPort::close()
{
    m_open = false;
    m_socket->abort();
}

QString TcpSerialPort::errorString() const
{
    return m_socket->errorString();
}
