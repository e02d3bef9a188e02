#pragma once

#include "remote/RemoteMessage.h"

#include <QObject>
#include <QString>

#include <functional>

class QLocalServer;

/// The running copy's end of the remote control: takes requests of this user's other processes and sends what
/// a handler says to them.
///
/// Nothing here waits: a client that is slow to ask or to listen is let go when its time is over, and costs
/// no more than RemoteMessage's bounds. Lives on the GUI thread.
class RemoteServer : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(RemoteServer)

public:
    static constexpr int mostClients = 8; ///< at a time; further ones are told so
    static constexpr int patience = 3000; ///< ms, for a request to come whole, and for an answer to be taken

    using Handler = std::function<RemoteAnswer(const RemoteRequest &)>;

    /// @p handler is called on the event loop, once for each request that is one.
    explicit RemoteServer(Handler handler, int clientPatience = patience, QObject *parent = nullptr);
    ~RemoteServer() override;

    /// Begins to listen. False where there is no place that can be trusted, or where another copy listens;
    /// the log says so. @p userMark as for RemotePlace.
    bool listen(const QString &userMark);

private:
    void takeClients();

    Handler m_handler;
    int m_patience;
    QLocalServer *m_server;
    int m_clients = 0;
};
