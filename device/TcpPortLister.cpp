#include "device/TcpPortLister.h"

#include <QHostAddress>
#include <QNetworkProxy>

#include <utility>

TcpPortLister::TcpPortLister(TcpAddress address, std::shared_ptr<QTcpSocket> socket)
    : m_address(address)
    , m_socket(std::move(socket))
{
    m_socket->setProxy(QNetworkProxy::NoProxy);
}

QVector<PortDescription> TcpPortLister::availablePorts()
{
    if (m_socket->state() == QAbstractSocket::UnconnectedState) {
        m_socket->connectToHost(QHostAddress(QHostAddress::LocalHost), m_address.port);
    }
    if (m_socket->state() != QAbstractSocket::ConnectedState) {
        return {};
    }
    const QString name = m_address.toString();
    return {PortDescription{name, name, QString(), 0}};
}
