#include "tests/support/http/HttpConnection.h"

#include <algorithm>

namespace
{

// What may wait in the socket: less than what a reader that does not read would notice in its memory.
constexpr qint64 waiting = 256LL * 1024;

} // namespace

HttpConnection::HttpConnection(QTcpSocket *socket, HttpServer *server)
    : QObject(server)
    , m_server(server)
    , m_socket(socket)
{
    socket->setParent(this);
    connect(socket, &QTcpSocket::readyRead, this, &HttpConnection::read);
    connect(socket, &QTcpSocket::bytesWritten, this, &HttpConnection::sendMore);
    connect(socket, &QTcpSocket::disconnected, this, &QObject::deleteLater);
    m_pause.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, &HttpConnection::sendMore);
}

void HttpConnection::read()
{
    m_head += m_socket->readAll();
    if (m_answering || !m_head.contains("\r\n\r\n")) {
        return;
    }
    m_answering = true;
    HttpRequest request;
    const QList<QByteArray> lines = m_head.left(m_head.indexOf("\r\n\r\n")).split('\n');
    const QList<QByteArray> words = lines.first().trimmed().split(' ');
    request.method = words.value(0);
    request.target = words.value(1);
    for (const QByteArray &line : lines.mid(1)) {
        const int colon = line.indexOf(':');
        request.headers.append({line.left(colon).trimmed(), line.mid(colon + 1).trimmed()});
    }
    m_answer = m_server->take(request);
    if (!m_answer.silent) {
        sendHead();
        sendMore();
    }
}

void HttpConnection::sendHead()
{
    QByteArray head =
        "HTTP/1.1 " + QByteArray::number(m_answer.status) + " Scripted\r\nConnection: close\r\n";
    for (const auto &header : qAsConst(m_answer.headers)) {
        head += header.first + ": " + header.second + "\r\n";
    }
    if (m_answer.length == HttpAnswer::Length::Given) {
        head += "Content-Length: " + QByteArray::number(m_answer.size()) + "\r\n";
    } else if (m_answer.length == HttpAnswer::Length::Chunked) {
        head += "Transfer-Encoding: chunked\r\n";
    }
    m_socket->write(head + "\r\n");
}

void HttpConnection::sendMore()
{
    if (!m_answering || m_answer.silent || m_pause.isActive()) {
        return;
    }
    while (!m_done && m_socket->bytesToWrite() < waiting) {
        if (m_answer.stallAt >= 0 && m_sent >= m_answer.stallAt) {
            return;
        }
        if (m_sent == m_answer.size() || (m_answer.breakOffAt >= 0 && m_sent >= m_answer.breakOffAt)) {
            finish();
            return;
        }
        qint64 size = std::min(m_answer.pieceSize, m_answer.size() - m_sent);
        for (const qint64 end : {m_answer.stallAt, m_answer.breakOffAt}) {
            size = end >= 0 ? std::min(size, end - m_sent) : size;
        }
        sendPiece(size);
        if (m_answer.pause > 0) {
            m_pause.start(m_answer.pause);
            return;
        }
    }
}

void HttpConnection::sendPiece(qint64 size)
{
    QByteArray piece = m_answer.generatedSize >= 0
                           ? HttpServer::generated(m_sent, size)
                           : m_answer.body.mid(static_cast<int>(m_sent), static_cast<int>(size));
    if (m_answer.length == HttpAnswer::Length::Chunked) {
        piece = QByteArray::number(size, 16) + "\r\n" + piece + "\r\n";
    }
    m_socket->write(piece);
    m_sent += size;
    m_server->m_bytesSent += size;
}

void HttpConnection::finish()
{
    m_done = true;
    if (m_answer.length == HttpAnswer::Length::Chunked && m_sent != m_answer.breakOffAt) {
        m_socket->write("0\r\n\r\n");
    }
    m_socket->disconnectFromHost();
}
