#include "tests/support/http/HttpServer.h"

#include "tests/support/http/HttpConnection.h"

#include <QHostAddress>

#include <algorithm>

namespace
{

QByteArray pathOf(const HttpRequest &request)
{
    const int query = request.target.indexOf('?');
    return query < 0 ? request.target : request.target.left(query);
}

} // namespace

QByteArray HttpRequest::header(const QByteArray &name) const
{
    for (const auto &each : headers) {
        if (each.first.compare(name, Qt::CaseInsensitive) == 0) {
            return each.second;
        }
    }
    return {};
}

HttpServer::HttpServer(QObject *parent)
    : QObject(parent)
{
    connect(&m_server, &QTcpServer::newConnection, this, [this] {
        while (QTcpSocket *socket = m_server.nextPendingConnection()) {
            new HttpConnection(socket, this);
        }
    });
    if (!m_server.listen(QHostAddress::LocalHost)) {
        qFatal("no port for the test's web server");
    }
}

void HttpServer::setAnswer(const QByteArray &path, const QByteArray &body)
{
    HttpAnswer answer;
    answer.body = body;
    setAnswer(path, answer);
}

QString HttpServer::url(const QByteArray &path) const
{
    return QStringLiteral("http://127.0.0.1:%1").arg(m_server.serverPort()) + QString::fromLatin1(path);
}

int HttpServer::requestCount(const QByteArray &path) const
{
    return static_cast<int>(
        std::count_if(m_requests.begin(), m_requests.end(),
                      [&path](const HttpRequest &request) { return pathOf(request) == path; }));
}

QByteArray HttpServer::generated(qint64 from, qint64 size)
{
    constexpr int period = 65521; // prime: no piece size divides it
    static const QByteArray table = [] {
        QByteArray bytes(period, Qt::Uninitialized);
        quint32 state = 1;
        for (char &byte : bytes) {
            state = state * 1664525U + 1013904223U;
            byte = static_cast<char>(state >> 24U);
        }
        return bytes;
    }();
    QByteArray bytes;
    bytes.reserve(static_cast<int>(size));
    while (bytes.size() < size) {
        const int position = static_cast<int>((from + bytes.size()) % period);
        const int length = std::min(period - position, static_cast<int>(size) - bytes.size());
        bytes.append(table.constData() + position, length);
    }
    return bytes;
}

HttpAnswer HttpServer::take(const HttpRequest &request)
{
    m_requests.append(request);
    HttpAnswer missing;
    missing.status = 404;
    missing.body = "not here";
    HttpAnswer answer = m_answers.value(pathOf(request), missing);
    Q_EMIT requested();
    return answer;
}
