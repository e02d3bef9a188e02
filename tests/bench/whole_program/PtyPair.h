#pragma once

#include <QByteArray>
#include <QString>

/// A pseudo-terminal: this end writes what the device would send.
class PtyPair
{
    Q_DISABLE_COPY_MOVE(PtyPair)

public:
    PtyPair();
    ~PtyPair();

    bool isValid() const { return m_slave >= 0; }
    QString path() const { return m_path; }
    void write(const char *bytes, int length) const;

    /// Waits until somebody has opened the port, told by the bytes sent being taken. @p message must do no
    /// harm.
    bool waitForReader(const char *message, int length, int timeoutMs) const;

private:
    QString m_path;
    int m_master = -1;
    int m_slave = -1;
};
