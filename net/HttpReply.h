#pragma once

#include "net/HttpResponse.h"

#include <QAbstractSocket>
#include <QElapsedTimer>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QTimer>

class QTcpSocket;

/// One GET on a connection of its own, which ends with the answer or with abort(), at once and whatever the
/// server still sends. The toolkit's own replies go on reading a head or the framing of chunks without a
/// bound, also after abort(), and now and then take a body that was cut off for a whole one.
///
/// What is fetched in the clear through an HTTP proxy is asked of that proxy, with the user and password that
/// are known of it; for HTTPS, and through proxies of other kinds, the connection leads through.
///
/// Not followed or used: redirects, cookies, compression, caches, kept connections. At most readBufferSize()
/// bytes and a network packet wait to be read; the server is slowed down beyond that. The request's transfer
/// timeout is the longest pause in what arrives.
class HttpReply : public QNetworkReply
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HttpReply)

public:
    static constexpr qint64 defaultReadBufferSize = 1024LL * 1024;

    /// Starts as soon as the event loop runs.
    HttpReply(const QNetworkRequest &request, QObject *parent);
    ~HttpReply() override;

    /// Whether @p url is a web address.
    static bool canFetch(const QUrl &url);

    /// Whether the end of the body is marked by a length or by chunks. Without, an answer that was cut off
    /// cannot be told from a whole one. Known from metaDataChanged() on.
    bool isEndMarked() const { return m_response.end() != HttpResponse::End::Connection; }

    void abort() override;
    qint64 bytesAvailable() const override { return QNetworkReply::bytesAvailable() + m_body.size(); }
    bool isSequential() const override { return true; }
    void setReadBufferSize(qint64 size) override;

protected:
    qint64 readData(char *data, qint64 maxSize) override;

private:
    void connectToServer();
    void sendRequest();
    void read();
    void onClosed();
    void onSocketError(QAbstractSocket::SocketError error);
    void report();
    void showHead();
    void complete();
    void end(NetworkError error, const QString &text);
    void readLater();

    QTcpSocket *m_socket;                          // this object's
    QNetworkProxy m_proxy{QNetworkProxy::NoProxy}; // that the request is handed to
    HttpResponse m_response;
    QByteArray m_body; // that waits to be read
    qint64 m_received = 0;
    qint64 m_reported = 0;
    bool m_headShown = false;
    bool m_closed = false;
    bool m_readIsDue = false;
    QTimer m_stall;
    QElapsedTimer m_sinceProgress;
};
