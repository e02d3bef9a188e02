#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

/// A pseudo terminal. The test holds its master side, as the device's firmware would.
class Pty
{
    Q_DISABLE_COPY_MOVE(Pty)

public:
    Pty()
        : m_master(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC))
    {
        if (m_master >= 0 && grantpt(m_master) == 0 && unlockpt(m_master) == 0) {
            m_slave = QFile::decodeName(ptsname(m_master));
        }
    }
    ~Pty() { hangUp(); }

    bool isValid() const { return !m_slave.isEmpty(); }
    /// The path of the side that the program opens.
    QString slave() const { return m_slave; }

    /// The number of bytes that went in, fewer when the terminal is full.
    int write(const QByteArray &bytes) const
    {
        const ssize_t written = ::write(m_master, bytes.constData(), static_cast<size_t>(bytes.size()));
        return static_cast<int>(qMax<ssize_t>(written, 0));
    }
    QByteArray read() const
    {
        QByteArray bytes(4096, '\0');
        const ssize_t count = ::read(m_master, bytes.data(), static_cast<size_t>(bytes.size()));
        bytes.truncate(static_cast<int>(qMax<ssize_t>(count, 0)));
        return bytes;
    }
    void hangUp()
    {
        if (m_master >= 0) {
            ::close(m_master);
            m_master = -1;
        }
    }

private:
    int m_master;
    QString m_slave;
};
