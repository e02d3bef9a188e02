#pragma once

#include "tools/simulator/Cable.h"

#include <QTcpServer>

#include <memory>

class QTcpSocket;

namespace simulator
{

/// A cable made of a TCP port that only programs on this computer reach. One program at a time has it open;
/// another is turned away, as at a serial port in use.
class TcpCable final : public Cable
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(TcpCable)

public:
    /// @p port 0 takes any free port when the cable is first put in, and keeps it.
    explicit TcpCable(quint16 port);
    ~TcpCable() override;

    bool plug() override;
    void unplug() override;
    bool isPlugged() const override { return m_server.isListening(); }
    bool isOpened() const override { return m_program != nullptr; }
    void send(const QByteArray &bytes) override;
    /// Whether the system has taken everything; whether the program has read it is not told here.
    bool isDelivered() const override;
    QString errorString() const override { return m_error; }
    QString address() const override;

private:
    void acceptPrograms();
    void onProgramGone();

    QTcpServer m_server;
    std::unique_ptr<QTcpSocket> m_program;
    QString m_error;
    quint16 m_port;
    int m_lost = 0; // bytes, since the program stopped reading
};

} // namespace simulator
