#pragma once

#include "device/SerialPort.h"

#include <QStringList>

/// What all the ports of one test have in common: how they behave, and in which order they were called.
struct PortBench {
    bool opens = true;
    QString failure = QStringLiteral("busy");
    /// Reported, twice as the system does it, from within setDataTerminalReady(true).
    SerialPort::Error errorAtDtr = SerialPort::Error::UnsupportedOperation;
    /// Reported from within open() when it fails.
    SerialPort::Error errorAtOpen = SerialPort::Error::Permission;
    /// At most this many bytes are handed out by one read.
    int bytesPerRead = 1 << 20;
    /// After this many bytes each further read fails, again and again.
    int bytesUntilError = 1 << 30;
    QStringList calls;
    int portsMade = 0;
    int portsAlive = 0;
    class FakeSerialPort *current = nullptr;
};

/// A port whose bytes and troubles the test provides; compared with the real one by tst_PortDoubles.
class FakeSerialPort : public SerialPort
{
    Q_DISABLE_COPY_MOVE(FakeSerialPort)

public:
    explicit FakeSerialPort(PortBench *bench)
        : m_bench(bench)
    {
        ++m_bench->portsMade;
        ++m_bench->portsAlive;
        m_bench->current = this;
    }
    ~FakeSerialPort() override
    {
        --m_bench->portsAlive;
        if (m_bench->current == this) {
            m_bench->current = nullptr;
        }
    }

    /// Bytes come in and the port says so. In the end some may be left, when one read does not give them all.
    void receive(const QByteArray &bytes)
    {
        m_incoming += bytes;
        Q_EMIT readyRead();
    }
    /// Bytes come in without a word.
    void hold(const QByteArray &bytes) { m_incoming += bytes; }
    void fail(Error error) { Q_EMIT errorOccurred(error); }

    void setPort(const PortDescription &port) override { note("setPort " + port.systemLocation.toUtf8()); }
    void setBaudRate(qint32 baudRate) override { note("setBaudRate " + QByteArray::number(baudRate)); }
    void clearError() override
    {
        note("clearError");
        Q_EMIT errorOccurred(Error::None);
    }
    bool open(QIODevice::OpenMode mode) override
    {
        note(mode == QIODevice::ReadWrite ? "open ReadWrite" : "open");
        if (m_isOpen) {
            Q_EMIT errorOccurred(Error::Open);
            return false;
        }
        Q_EMIT errorOccurred(Error::None);
        m_isOpen = m_bench->opens;
        if (!m_isOpen) {
            Q_EMIT errorOccurred(m_bench->errorAtOpen);
        }
        return m_isOpen;
    }
    bool isOpen() const override { return m_isOpen; }
    bool setDataTerminalReady(bool ready) override
    {
        note(ready ? "dtr on" : "dtr off");
        if (!reportUnlessOpen()) {
            return false;
        }
        if (m_bench->errorAtDtr == Error::None) {
            return true;
        }
        Q_EMIT errorOccurred(m_bench->errorAtDtr);
        Q_EMIT errorOccurred(m_bench->errorAtDtr);
        return false;
    }
    QByteArray readAll() override
    {
        note(m_isOpen ? "readAll" : "readAll on a closed port");
        if (!m_isOpen) {
            return {};
        }
        const int wanted = qMin(m_bench->bytesPerRead, m_bench->bytesUntilError);
        QByteArray bytes = m_incoming.left(wanted);
        m_incoming.remove(0, bytes.size());
        m_bench->bytesUntilError -= bytes.size();
        if (m_bench->bytesUntilError == 0) {
            Q_EMIT errorOccurred(Error::Read);
        }
        return bytes;
    }
    qint64 write(const QByteArray &bytes) override
    {
        note((m_isOpen ? "write " : "write on a closed port ") + bytes.toHex());
        return m_isOpen ? bytes.size() : -1;
    }
    bool flush() override
    {
        note("flush");
        return reportUnlessOpen();
    }
    void close() override
    {
        note("close");
        if (reportUnlessOpen()) {
            m_isOpen = false;
            m_incoming.clear();
        }
    }
    QString errorString() const override { return m_bench->failure; }

private:
    bool reportUnlessOpen()
    {
        if (!m_isOpen) {
            Q_EMIT errorOccurred(Error::NotOpen);
        }
        return m_isOpen;
    }
    void note(const QByteArray &call) { m_bench->calls.append(QString::fromUtf8(call)); }

    PortBench *m_bench;
    QByteArray m_incoming;
    bool m_isOpen = false;
};
