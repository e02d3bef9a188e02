#include "tests/support/jack/MidiListener.h"

#include <QElapsedTimer>

MidiListener::MidiListener(const QProcessEnvironment &environment, const QString &port, const QString &client)
{
    m_process.setProcessEnvironment(environment);
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_process.start(QStringLiteral(VELTRIX_LISTENER),
                    {QStringLiteral("--midi-only"), QStringLiteral("--midi-client"), client,
                     QStringLiteral("--midi-port"), port});
    QString line;
    m_ready = readLine(10000, &line) && line == QLatin1String("ready");
}

MidiListener::~MidiListener()
{
    m_process.closeWriteChannel();
    // Closing waits for the server, which may stand still.
    if (!m_process.waitForFinished(2000)) {
        m_process.kill();
        m_process.waitForFinished(5000);
    }
}

bool MidiListener::readLine(int timeoutMs, QString *line)
{
    QElapsedTimer timer;
    timer.start();
    while (!m_process.canReadLine()) {
        const int rest = timeoutMs - static_cast<int>(timer.elapsed());
        if (!m_process.waitForReadyRead(qMax(rest, 0)))
            return false;
    }
    *line = QString::fromLatin1(m_process.readLine()).trimmed();
    return true;
}

QStringList MidiListener::lines()
{
    return waitForLines(0, 0);
}

QStringList MidiListener::waitForLines(int count, int timeoutMs)
{
    QElapsedTimer timer;
    timer.start();
    QString line;
    while (
        readLine(m_lines.size() >= count ? 0 : qMax(timeoutMs - static_cast<int>(timer.elapsed()), 0), &line))
        m_lines.append(line);
    return m_lines;
}
