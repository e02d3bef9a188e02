#include "net/HttpResponse.h"

#include <algorithm>
#include <limits>

namespace
{

bool isDigits(const QByteArray &text)
{
    return !text.isEmpty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool isToken(const QByteArray &text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](char c) {
        return c > ' ' && c < 0x7f && !QByteArray("()<>@,;:\\\"/[]?={}").contains(c);
    });
}

} // namespace

bool HttpResponse::fail(const char *reason)
{
    m_error = QString::fromLatin1(reason);
    return false;
}

bool HttpResponse::take(const QByteArray &bytes, QByteArray &body)
{
    int at = 0;
    while (at < bytes.size() && m_part != Part::Done) {
        if (m_part == Part::Body || m_part == Part::Chunk) {
            const int size = static_cast<int>(std::min<qint64>(m_left, bytes.size() - at));
            body.append(bytes.constData() + at, size);
            at += size;
            m_received += size;
            m_left -= m_part == Part::Body && m_end == End::Connection ? 0 : size;
            if (m_left == 0) {
                m_part = m_part == Part::Chunk ? Part::ChunkEnd : Part::Done;
            }
            continue;
        }
        const int lineEnd = bytes.indexOf('\n', at);
        const int size = (lineEnd < 0 ? bytes.size() : lineEnd + 1) - at;
        if (!countFraming(size)) {
            return false;
        }
        m_line.append(bytes.constData() + at, size);
        at += size;
        if (lineEnd < 0) {
            break;
        }
        m_line.chop(m_line.endsWith("\r\n") ? 2 : 1);
        const QByteArray line = m_line;
        m_line.clear();
        if (!takeLine(line)) {
            return false;
        }
    }
    return true;
}

bool HttpResponse::countFraming(qint64 bytes)
{
    if (m_line.size() + bytes > maximumHeadSize) {
        return fail("A line of the answer does not come to an end");
    }
    const bool head = m_part == Part::Status || m_part == Part::Headers || m_part == Part::Trailers;
    if (head) {
        m_headSize += bytes;
        return m_headSize <= maximumHeadSize || fail("The head of the answer does not come to an end");
    }
    m_framing += bytes;
    return m_framing <= maximumHeadSize + maximumFramingFactor * m_received ||
           fail("The answer is made of hardly anything but the sizes of its chunks");
}

bool HttpResponse::takeLine(const QByteArray &line)
{
    switch (m_part) {
    case Part::Status:
        return takeStatus(line);
    case Part::Headers:
        return line.isEmpty() ? endHead() : takeHeader(line);
    case Part::ChunkSize:
        return takeChunkSize(line);
    case Part::ChunkEnd:
        m_part = Part::ChunkSize;
        return line.isEmpty() || fail("A chunk of the answer is longer than it says");
    case Part::Trailers:
        if (line.isEmpty()) {
            m_part = Part::Done;
        }
        return true;
    case Part::Body:
    case Part::Chunk:
    case Part::Done:
        break;
    }
    return true;
}

// "HTTP/1.1 200 OK"; the reason may be missing.
bool HttpResponse::takeStatus(const QByteArray &line)
{
    const bool known = line.startsWith("HTTP/1.1 ") || line.startsWith("HTTP/1.0 ");
    const QByteArray number = line.mid(9, 3);
    if (!known || !isDigits(number) || number.size() != 3 || (line.size() > 12 && line.at(12) != ' ')) {
        return fail("The server does not speak HTTP");
    }
    m_status = number.toInt();
    m_reason = line.mid(13).trimmed();
    m_headers.clear();
    m_part = Part::Headers;
    return true;
}

bool HttpResponse::takeHeader(const QByteArray &line)
{
    const int colon = line.indexOf(':');
    const QByteArray name = line.left(colon);
    if (colon <= 0 || !isToken(name)) {
        return fail("A header of the answer is malformed");
    }
    m_headers.append({name, line.mid(colon + 1).trimmed()});
    return true;
}

bool HttpResponse::endHead()
{
    if (m_status < 200) { // interim: the answer is still to come
        m_part = Part::Status;
        return m_status != 101 || fail("The server wants to speak another protocol");
    }
    m_chunked = false;
    m_length = -1;
    for (const auto &header : qAsConst(m_headers)) {
        if (header.first.compare("Transfer-Encoding", Qt::CaseInsensitive) == 0) {
            if (m_chunked || header.second.compare("chunked", Qt::CaseInsensitive) != 0) {
                return fail("The answer is encoded in a way that was not asked for");
            }
            m_chunked = true;
        } else if (header.first.compare("Content-Length", Qt::CaseInsensitive) == 0) {
            bool fits = false;
            const qint64 length = header.second.toLongLong(&fits);
            if (!fits || !isDigits(header.second) || (m_length >= 0 && m_length != length)) {
                return fail("The length of the answer is malformed");
            }
            m_length = length;
        }
    }
    if (m_status == 204 || m_status == 304) {
        m_length = 0; // never with a body, whatever they say
        m_chunked = false;
    }
    if (m_chunked) {
        m_end = End::Chunks;
        m_length = -1;
        m_part = Part::ChunkSize;
    } else {
        m_end = m_length >= 0 ? End::Length : End::Connection;
        m_left = m_length >= 0 ? m_length : std::numeric_limits<qint64>::max();
        m_part = m_left == 0 ? Part::Done : Part::Body;
    }
    return true;
}

// A hexadecimal number; what follows a semicolon is for others.
bool HttpResponse::takeChunkSize(const QByteArray &line)
{
    const QByteArray digits = line.split(';').first().trimmed();
    bool fits = false;
    const qint64 size = digits.toLongLong(&fits, 16);
    const bool plain = std::all_of(digits.begin(), digits.end(), [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
    });
    if (!fits || !plain) {
        return fail("The size of a chunk is malformed");
    }
    m_left = size;
    m_part = size > 0 ? Part::Chunk : Part::Trailers;
    return true;
}

bool HttpResponse::close()
{
    if (m_part == Part::Done) {
        return true;
    }
    if (m_part == Part::Body && m_end == End::Connection) {
        m_part = Part::Done;
        return true;
    }
    if (m_part == Part::Body) {
        m_error = QStringLiteral("Connection closed after %1 of %2 bytes").arg(m_received).arg(m_length);
        return false;
    }
    return fail(isHeadComplete() ? "Connection closed within the answer"
                                 : "Connection closed without an answer");
}
