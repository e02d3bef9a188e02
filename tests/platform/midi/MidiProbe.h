#pragma once

#include "tests/support/jack/JackServer.h"
#include "tests/support/jack/MidiListener.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTest>

#include <memory>

inline QByteArray fileText(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray();
}

/// The program under test; see midi_probe.cpp for its commands.
class Probe
{
public:
    explicit Probe(QProcessEnvironment environment)
    {
        environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("veltrix.midi.debug=true"));
        m_process.setProcessEnvironment(environment);
        m_process.start(QStringLiteral(MIDI_PROBE), QStringList());
    }
    ~Probe()
    {
        if (m_process.state() != QProcess::NotRunning && end() < 0) {
            m_process.kill();
            m_process.waitForFinished(5000);
        }
    }

    void tell(const QString &command) { m_process.write(command.toLatin1() + '\n'); }

    /// The answer, or an empty text when none came in @p timeoutMs. Log lines before it go to log.
    QString ask(const QString &command, int timeoutMs = 15000)
    {
        tell(command);
        QElapsedTimer timer;
        timer.start();
        for (;;) {
            while (!m_process.canReadLine()) {
                if (!m_process.waitForReadyRead(qMax(timeoutMs - static_cast<int>(timer.elapsed()), 0)))
                    return QString();
            }
            const QString line = QString::fromUtf8(m_process.readLine()).trimmed();
            if (!line.startsWith(QLatin1String("log ")))
                return line;
            log.append(line.mid(4));
        }
    }

    /// The number at the end of the answer; -1 when none came.
    int askNumber(const QString &command)
    {
        const QString answer = ask(command);
        return answer.isEmpty() ? -1 : answer.section(QLatin1Char(' '), -1).toInt();
    }

    /// Ends the program as at quit and returns how long that took, -1 when it crashed or went on.
    int end()
    {
        QElapsedTimer timer;
        timer.start();
        m_process.closeWriteChannel();
        const bool good = m_process.waitForFinished(10000) &&
                          m_process.exitStatus() == QProcess::NormalExit && m_process.exitCode() == 0;
        return good ? static_cast<int>(timer.elapsed()) : -1;
    }

    void killNow()
    {
        m_process.kill();
        m_process.waitForFinished(5000);
    }

    /// The process that it starts first of all.
    QByteArray releaseProcess() const
    {
        const QString list = QStringLiteral("/proc/%1/task/%1/children").arg(m_process.processId());
        return fileText(list).split(' ').value(0);
    }

    /// What came on standard error so far: not from the log.
    QString printed() { return QString::fromLocal8Bit(m_process.readAllStandardError()); }

    QStringList log;

private:
    QProcess m_process;
};

inline QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

// A new connection carries messages from the server's next cycle on.
constexpr int afterConnecting = 100;

// Calls that wait for an answer give up after 2000 ms; rounded up for a busy machine.
constexpr int patience = 4000;

#define VERIFY_BETWEEN(value, low, high)                                                                     \
    do {                                                                                                     \
        const int result = (value);                                                                          \
        QVERIFY2(result >= (low) && result <= (high), qPrintable(QString::number(result)));                  \
    } while (false)

/// A JACK server, a host that listens, and the program under test, anew for each test.
class MidiDesk
{
protected:
    void setUp()
    {
        m_server = std::make_unique<JackServer>();
        QVERIFY2(m_server->isRunning(), qPrintable(m_server->error()));
        m_listener = std::make_unique<MidiListener>(m_server->environment());
        QVERIFY(m_listener->isReady());
        m_probe = std::make_unique<Probe>(m_server->environment());
    }

    void tearDown()
    {
        if (QTest::currentTestFailed())
            qWarning().noquote() << "log of the program:" << m_probe->log.join(QLatin1String(" | "));
        m_server->resume();
        m_probe.reset();
        m_listener.reset();
        m_server.reset();
    }

    void openPort()
    {
        VERIFY_BETWEEN(m_probe->askNumber(text("create")), 0, patience);
        QCOMPARE(m_probe->ask(text("choose")), text("chose tester:FROM host"));
        QTest::qWait(afterConnecting);
    }

    std::unique_ptr<JackServer> m_server;
    std::unique_ptr<MidiListener> m_listener;
    std::unique_ptr<Probe> m_probe;
};
