#pragma once

#include "device/PortLister.h"
#include "device/TcpAddress.h"

#include <QTcpSocket>

#include <memory>

/// Lists a virtual device as the only port for as long as a connection to it stands.
///
/// Every look that finds no connection begins one, and does not wait for it: a later look finds it. So the
/// device appears within two scans, and an absent one costs nothing. TcpSerialPort is the port of the same
/// socket.
class TcpPortLister final : public PortLister
{
    Q_DISABLE_COPY_MOVE(TcpPortLister)

public:
    TcpPortLister(TcpAddress address, std::shared_ptr<QTcpSocket> socket);

    QVector<PortDescription> availablePorts() override;
    std::optional<qint64> changeStamp() override { return std::nullopt; }

private:
    TcpAddress m_address;
    std::shared_ptr<QTcpSocket> m_socket;
};
