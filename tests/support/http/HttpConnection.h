#pragma once

#include "tests/support/http/HttpServer.h"

#include <QObject>
#include <QTcpSocket>
#include <QTimer>

/// One client of an HttpServer: reads a request, answers it, closes. Goes with its socket or its server.
class HttpConnection : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HttpConnection)

public:
    HttpConnection(QTcpSocket *socket, HttpServer *server);

private:
    void read();
    void sendHead();
    void sendMore();
    void sendPiece(qint64 size);
    void finish();

    HttpServer *m_server;
    QTcpSocket *m_socket;
    QByteArray m_head;
    HttpAnswer m_answer;
    qint64 m_sent = 0;
    bool m_answering = false;
    bool m_done = false;
    QTimer m_pause;
};
