#include "remote/RemoteServer.h"

#include "remote/RemoteLog.h"
#include "remote/RemotePlace.h"

#include <QLocalServer>
#include <QLocalSocket>
#include <QTimer>

#include <memory>
#include <utility>

namespace
{

constexpr int connectTime = 100; // ms; a local socket answers at once or not at all

// One client, from its first byte to the last one of its answer.
class Conversation : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(Conversation)

public:
    // Takes @p socket over. @p parent must outlive this object's events.
    Conversation(QLocalSocket *socket, const RemoteServer::Handler &handler, int patience, QObject *parent)
        : QObject(parent)
        , m_socket(socket)
        , m_handler(handler)
    {
        m_socket->setParent(this);
        m_socket->setReadBufferSize(RemoteMessage::maximumRequest + 1);
        m_time.setSingleShot(true);
        m_time.setInterval(patience);
        connect(&m_time, &QTimer::timeout, this, &Conversation::deleteLater);
        connect(m_socket, &QLocalSocket::disconnected, this, &Conversation::deleteLater);
        connect(m_socket, &QLocalSocket::readyRead, this, &Conversation::read);
        m_time.start();
        read();
    }

private:
    void read()
    {
        if (m_answered) {
            m_socket->readAll(); // more than it had to say
            return;
        }
        m_request += m_socket->read(RemoteMessage::maximumRequest + 1 - m_request.size());
        const int end = m_request.indexOf('\n');
        if (end < 0 && m_request.size() <= RemoteMessage::maximumRequest) {
            return; // there is more to come
        }
        QString fault;
        const auto request = RemoteMessage::readRequest(end < 0 ? m_request : m_request.left(end), &fault);
        m_answered = true;
        const RemoteAnswer answer = request ? m_handler(*request) : RemoteAnswer{2, fault};
        m_time.start();
        m_socket->write(RemoteMessage::write(answer));
        m_socket->disconnectFromServer(); // as soon as all is written
    }

    QLocalSocket *m_socket;
    const RemoteServer::Handler &m_handler;
    QTimer m_time;
    QByteArray m_request;
    bool m_answered = false;
};

bool someoneListens(const QString &name)
{
    QLocalSocket socket;
    socket.connectToServer(name);
    return socket.waitForConnected(connectTime);
}

} // namespace

RemoteServer::RemoteServer(Handler handler, int clientPatience, QObject *parent)
    : QObject(parent)
    , m_handler(std::move(handler))
    , m_patience(clientPatience)
    , m_server(new QLocalServer(this))
{
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    connect(m_server, &QLocalServer::newConnection, this, &RemoteServer::takeClients);
}

RemoteServer::~RemoteServer() = default;

bool RemoteServer::listen(const QString &userMark)
{
    const RemotePlace asked = RemotePlace::toAsk(userMark);
    if (!asked.name.isEmpty() && someoneListens(asked.name)) {
        qCWarning(lcRemote, "another copy of the program is remote-controlled: this one is not");
        return false;
    }
    const RemotePlace place = RemotePlace::toListen(userMark);
    if (place.name.isEmpty()) {
        qCWarning(lcRemote).noquote() << "no remote control:" << place.problem;
        return false;
    }
    if (!m_server->listen(place.name)) {
        qCWarning(lcRemote).noquote() << "no remote control:" << m_server->errorString();
        return false;
    }
    return true;
}

void RemoteServer::takeClients()
{
    while (QLocalSocket *socket = m_server->nextPendingConnection()) {
        const auto refuse = [socket](const QString &why) {
            const std::unique_ptr<QLocalSocket> owned(socket);
            owned->write(RemoteMessage::write(RemoteAnswer{1, why}));
            owned->flush();
        };
        if (!RemotePlace::isOwn(socket->socketDescriptor())) {
            qCWarning(lcRemote, "another user has asked for something");
            refuse(tr("This is another user's copy of the program."));
        } else if (m_clients >= mostClients) {
            refuse(tr("Too many commands at a time: try again."));
        } else {
            ++m_clients;
            auto *conversation = new Conversation(socket, m_handler, m_patience, this);
            connect(conversation, &QObject::destroyed, this, [this] { --m_clients; });
        }
    }
}

#include "RemoteServer.moc"
