#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>

/// Takes one answer of an HTTP/1 server apart while it arrives: bytes in, head and body out. Knows no socket
/// and no time.
///
/// Nothing that a server sends makes it keep more than maximumHeadSize, whatever has no end: the status line,
/// a header, a trailer, an interim answer, a chunk's size or extension. What stands around the body's bytes
/// is bounded with them, so that an answer of bounded length is one of bounded traffic too.
class HttpResponse
{
public:
    /// Of the status line, the headers and the trailers together, interim answers included.
    static constexpr int maximumHeadSize = 64 * 1024;

    /// What each byte of a body may cost beside itself. Chunks of a single byte cost five.
    static constexpr qint64 maximumFramingFactor = 8;

    /// How the end of the body shows.
    enum class End {
        Length,     ///< after so many bytes
        Chunks,     ///< with an empty chunk and the trailers
        Connection, ///< not at all: a connection that was cut looks just the same
    };

    using Headers = QList<QPair<QByteArray, QByteArray>>;

    /// Takes the next bytes and appends what of them is body to @p body. False when this is no answer, or one
    /// beyond a bound; error() then says why, and nothing more is to be given. Bytes behind the end are left.
    bool take(const QByteArray &bytes, QByteArray &body);

    /// The server has closed the connection. False when the answer had not come to its end.
    bool close();

    bool isHeadComplete() const { return m_part >= Part::Body; }
    bool isComplete() const { return m_part == Part::Done; }

    /// What went wrong, in plain English.
    const QString &error() const { return m_error; }

    // Of a complete head:
    int status() const { return m_status; }
    const QByteArray &reason() const { return m_reason; }
    const Headers &headers() const { return m_headers; }
    End end() const { return m_end; }
    qint64 length() const { return m_length; } ///< of the body; -1 when the head does not tell

private:
    enum class Part { Status, Headers, Body, ChunkSize, Chunk, ChunkEnd, Trailers, Done };

    bool takeLine(const QByteArray &line);
    bool takeStatus(const QByteArray &line);
    bool takeHeader(const QByteArray &line);
    bool takeChunkSize(const QByteArray &line);
    bool endHead();
    bool countFraming(qint64 bytes);
    bool fail(const char *reason);

    Part m_part = Part::Status;
    QByteArray m_line; // that has not ended yet
    qint64 m_headSize = 0;
    qint64 m_framing = 0; // bytes between those of the body
    qint64 m_received = 0;
    qint64 m_left = 0; // of the body, or of the chunk
    int m_status = 0;
    QByteArray m_reason;
    Headers m_headers;
    bool m_chunked = false;
    End m_end = End::Connection;
    qint64 m_length = -1;
    QString m_error;
};
