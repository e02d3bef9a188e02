#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>

#include <memory>

/// A private JACK server (jackd with its dummy driver) for one test. It ends with
/// the object, and with the test program if that crashes. In each cycle it waits for clients that are late,
/// and cycles no faster than a busy machine keeps up with, so that there messages come late instead of never.
///
/// One at a time in a /dev/shm, by a lock file there: a user's servers share a database, and each deletes it
/// when it ends. So all have the same name, and the next one gets the place of one that died. Tests with a
/// server have a /dev/shm of their own where they may (scripts/desk.d/own-memory), and then none waits for
/// another.
class JackServer
{
    Q_DISABLE_COPY_MOVE(JackServer)

public:
    /// @p period in frames of 1/48000 s: how often the server cycles.
    explicit JackServer(int period = 1024);
    ~JackServer();

    /// True once the server takes clients. When false, error() says why.
    bool isRunning() const { return m_process && m_process->state() == QProcess::Running; }
    QString error() const { return m_error; }
    QString name() const { return m_name; }
    qint64 processId() const { return m_process ? m_process->processId() : 0; }

    /// The test's environment, with this server as the default one: for programs that the test starts.
    QProcessEnvironment environment() const;

    /// An environment in which no server can be found.
    static QProcessEnvironment environmentWithoutServer();

    /// SIGSTOP and SIGCONT: the server stands still, and goes on.
    void pause();
    void resume();

    /// SIGKILL: the server dies without a word to its clients.
    void kill();

    /// Ends the server in order. Does nothing when it has ended already.
    void stop();

private:
    void start(int period);
    void tidyUp();

    int m_turn; // the lock file's descriptor, open as long as this object lives
    QString m_name;
    QString m_error;
    std::unique_ptr<QProcess> m_process;
    bool m_killed = false;
};
