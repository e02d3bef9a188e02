#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>

/// A MIDI input port in a process of its own: what "the music program" gets.
class MidiListener
{
    Q_DISABLE_COPY_MOVE(MidiListener)

public:
    /// Opens the port "@p client:@p port" on the JACK server of @p environment.
    explicit MidiListener(const QProcessEnvironment &environment,
                          const QString &port = QStringLiteral("FROM host"),
                          const QString &client = QStringLiteral("tester"));
    ~MidiListener();

    /// True once the port is there.
    bool isReady() const { return m_ready; }

    /// What has arrived so far, one line for each message: "midi 90 3C 64".
    QStringList lines();

    /// Waits until @p count messages have arrived in all, but no longer than @p timeoutMs, and returns what
    /// has.
    QStringList waitForLines(int count, int timeoutMs = 5000);

private:
    bool readLine(int timeoutMs, QString *line);

    QProcess m_process;
    QStringList m_lines;
    bool m_ready = false;
};
