#pragma once

#include <QProcess>
#include <QStringList>

#include <functional>

/// A program that a test talks to line by line. It ends with this object, and with the test if that crashes.
/// Needs no event loop; to be used from one thread.
class Child
{
    Q_DISABLE_COPY_MOVE(Child)

public:
    enum class Output { Standard, Error };

    /// @p output: which of the two is read; the other one is shown when the test shows its own errors.
    Child(const QString &program, const QStringList &arguments, const QProcessEnvironment &environment,
          Output output);
    ~Child();

    bool isRunning() { return m_process.state() == QProcess::Running; }
    qint64 processId() const { return m_process.processId(); }
    int exitCode() const { return m_process.exitCode(); }
    bool hasCrashed() const { return m_process.exitStatus() == QProcess::CrashExit; }

    void send(const QString &line);
    void closeInput();

    /// Sends SIGTERM and waits; false (and SIGKILL) when the program does not end in time.
    bool terminate(int timeoutMs = 5000);
    bool waitForEnd(int timeoutMs = 5000);

    /// The lines read and not yet taken.
    const QStringList &lines() const { return m_lines; }
    QStringList take();

    /// Reads until @p condition holds for the lines so far; false when it does not within the time or the
    /// program ends.
    bool readUntil(const std::function<bool(const QStringList &)> &condition, int timeoutMs);

    /// Reads until a line that contains @p text, which is taken together with those before it.
    bool waitForLine(const QString &text, int timeoutMs);

    /// Reads what comes within the time.
    void readFor(int milliseconds);

private:
    void read(int timeoutMs);

    class Process final : public QProcess
    {
    protected:
        void setupChildProcess() override;
    };

    Process m_process;
    QByteArray m_rest;
    QStringList m_lines;
};
