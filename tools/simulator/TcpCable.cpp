#include "tools/simulator/TcpCable.h"

#include <QNetworkProxy>
#include <QTcpSocket>

#include <utility>

namespace simulator
{

namespace
{

constexpr qint64 mostPendingBytes = qint64{64} * 1024;

} // namespace

TcpCable::TcpCable(quint16 port)
    : m_port(port)
{
    m_server.setProxy(QNetworkProxy::NoProxy);
    connect(&m_server, &QTcpServer::newConnection, this, &TcpCable::acceptPrograms);
}

TcpCable::~TcpCable()
{
    unplug();
}

bool TcpCable::plug()
{
    if (isPlugged()) {
        return true;
    }
    if (!m_server.listen(QHostAddress(QHostAddress::LocalHost), m_port)) {
        m_error = QStringLiteral("%1: %2").arg(address(), m_server.errorString());
        return false;
    }
    m_port = m_server.serverPort();
    Q_EMIT pluggedChanged(true);
    return true;
}

void TcpCable::unplug()
{
    if (!isPlugged()) {
        return;
    }
    m_server.close();
    if (m_program) {
        m_program->disconnect(this);
        m_program->disconnectFromHost(); // after what is still to be sent
        // The system goes on delivering when the object has gone; it must have the bytes by then.
        if (m_program->state() != QAbstractSocket::UnconnectedState) {
            m_program->waitForDisconnected(200);
        }
        m_program.reset();
        m_lost = 0;
        Q_EMIT openedChanged(false);
    }
    Q_EMIT pluggedChanged(false);
}

void TcpCable::send(const QByteArray &bytes)
{
    acceptPrograms(); // one that came a moment ago counts, although the event loop has not come to it yet
    if (!m_program) {
        return;
    }
    if (m_lost > 0 || m_program->bytesToWrite() + bytes.size() > mostPendingBytes) {
        if (m_lost == 0) {
            Q_EMIT overrun();
        }
        m_lost += bytes.size();
        return;
    }
    m_program->write(bytes);
    m_program->flush();
}

bool TcpCable::isDelivered() const
{
    return !m_program || m_program->bytesToWrite() == 0;
}

QString TcpCable::address() const
{
    return QStringLiteral("tcp:127.0.0.1:%1").arg(m_port);
}

void TcpCable::acceptPrograms()
{
    while (m_server.hasPendingConnections()) {
        std::unique_ptr<QTcpSocket> program(m_server.nextPendingConnection());
        if (m_program) {
            program->abort();
            continue;
        }
        program->setParent(nullptr);
        program->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        connect(program.get(), &QTcpSocket::disconnected, this, &TcpCable::onProgramGone);
        connect(program.get(), &QTcpSocket::readyRead, this,
                [this] { Q_EMIT received(m_program->readAll()); });
        connect(program.get(), &QTcpSocket::bytesWritten, this, [this] {
            if (m_lost > 0 && m_program->bytesToWrite() == 0) {
                Q_EMIT overrunEnded(std::exchange(m_lost, 0));
            }
        });
        m_program = std::move(program);
        Q_EMIT openedChanged(true);
    }
}

void TcpCable::onProgramGone()
{
    m_program->disconnect(this);
    m_program.release()->deleteLater(); // it is the one that tells
    m_lost = 0;
    Q_EMIT openedChanged(false);
}

} // namespace simulator
