#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QObject>
#include <QString>
#include <QTcpServer>

/// A request as it arrived.
struct HttpRequest {
    QByteArray method;
    QByteArray target; ///< path and query, as sent
    QList<QPair<QByteArray, QByteArray>> headers;

    /// The value of the header @p name, whatever its case; null if it was not sent.
    QByteArray header(const QByteArray &name) const;
};

/// How a request is answered. By default at once, whole, with the length given.
struct HttpAnswer {
    enum class Length {
        Given,
        Unknown, ///< the body ends with the connection
        Chunked,
    };

    int status = 200;
    QList<QPair<QByteArray, QByteArray>> headers;
    QByteArray body;
    /// Instead of `body`: so many bytes, made while they are sent. See HttpServer::generated().
    qint64 generatedSize = -1;
    Length length = Length::Given;
    /// Send nothing at all, and keep the connection.
    bool silent = false;
    /// After so many bytes of the body: send nothing more and keep the connection.
    qint64 stallAt = -1;
    /// After so many bytes of the body: close the connection.
    qint64 breakOffAt = -1;
    /// Send `pieceSize` bytes of the body each `pause` ms. 0 is as fast as they are taken.
    int pause = 0;
    qint64 pieceSize = 64LL * 1024;

    qint64 size() const { return generatedSize >= 0 ? generatedSize : body.size(); }
};

/// A web server on a free port of loopback. What it has no answer for gets a 404. Runs on the event loop of
/// the thread that made it.
class HttpServer : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HttpServer)

public:
    explicit HttpServer(QObject *parent = nullptr);

    /// @p path is without the query.
    void setAnswer(const QByteArray &path, const HttpAnswer &answer) { m_answers.insert(path, answer); }
    void setAnswer(const QByteArray &path, const QByteArray &body);

    /// The address of @p path, which begins with "/".
    QString url(const QByteArray &path) const;

    const QList<HttpRequest> &requests() const { return m_requests; }
    /// How many requests there were for @p path, whatever the query.
    int requestCount(const QByteArray &path) const;
    void forgetRequests() { m_requests.clear(); }

    /// Bytes of bodies that were handed to the system so far.
    qint64 bytesSent() const { return m_bytesSent; }

    /// The bytes from @p from on of a generated body: the same for every body, with a long prime period.
    static QByteArray generated(qint64 from, qint64 size);

Q_SIGNALS:
    void requested();

private:
    friend class HttpConnection;
    HttpAnswer take(const HttpRequest &request);

    QTcpServer m_server;
    QHash<QByteArray, HttpAnswer> m_answers;
    QList<HttpRequest> m_requests;
    qint64 m_bytesSent = 0;
};
