#include "tests/e2e/support/Child.h"

#include <QElapsedTimer>

#include <csignal>
#include <sys/prctl.h>

void Child::Process::setupChildProcess()
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
}

Child::Child(const QString &program, const QStringList &arguments, const QProcessEnvironment &environment,
             Output output)
{
    m_process.setProcessEnvironment(environment);
    if (output == Output::Standard) {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.setReadChannel(QProcess::StandardOutput);
    } else {
        m_process.setProcessChannelMode(QProcess::ForwardedOutputChannel);
        m_process.setReadChannel(QProcess::StandardError);
    }
    m_process.start(program, arguments);
    m_process.waitForStarted();
}

Child::~Child()
{
    if (isRunning()) {
        terminate();
    }
}

void Child::send(const QString &line)
{
    m_process.write(line.toUtf8() + '\n');
    m_process.waitForBytesWritten();
}

void Child::closeInput()
{
    m_process.closeWriteChannel();
}

bool Child::terminate(int timeoutMs)
{
    m_process.terminate();
    if (waitForEnd(timeoutMs)) {
        return true;
    }
    m_process.kill();
    m_process.waitForFinished();
    return false;
}

bool Child::waitForEnd(int timeoutMs)
{
    const bool ended = m_process.state() == QProcess::NotRunning || m_process.waitForFinished(timeoutMs);
    read(0);
    return ended;
}

QStringList Child::take()
{
    QStringList taken = m_lines;
    m_lines.clear();
    return taken;
}

void Child::read(int timeoutMs)
{
    if (m_process.bytesAvailable() == 0) {
        m_process.waitForReadyRead(timeoutMs);
    }
    m_rest += m_process.read(m_process.bytesAvailable());
    for (int end = 0; (end = m_rest.indexOf('\n')) >= 0;) {
        m_lines.append(QString::fromUtf8(m_rest.left(end)));
        m_rest.remove(0, end + 1);
    }
}

bool Child::readUntil(const std::function<bool(const QStringList &)> &condition, int timeoutMs)
{
    QElapsedTimer patience;
    patience.start();
    while (!condition(m_lines)) {
        const qint64 left = timeoutMs - patience.elapsed();
        if (left <= 0) {
            return false;
        }
        const bool wasRunning = isRunning();
        read(static_cast<int>(qMin<qint64>(left, 50)));
        if (!wasRunning) {
            return condition(m_lines);
        }
    }
    return true;
}

bool Child::waitForLine(const QString &text, int timeoutMs)
{
    int found = -1;
    const auto contains = [&found, &text](const QStringList &lines) {
        for (int i = 0; found < 0 && i < lines.size(); ++i) {
            if (lines.at(i).contains(text)) {
                found = i;
            }
        }
        return found >= 0;
    };
    if (!readUntil(contains, timeoutMs)) {
        return false;
    }
    m_lines = m_lines.mid(found + 1);
    return true;
}

void Child::readFor(int milliseconds)
{
    readUntil([](const QStringList &) { return false; }, milliseconds);
}
