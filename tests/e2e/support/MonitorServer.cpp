#include "tests/e2e/support/MonitorServer.h"

#include <QElapsedTimer>

#include <csignal>
#include <sys/prctl.h>

namespace
{

constexpr int patience = 20000; // ms

class ServerProcess final : public QProcess
{
protected:
    void setupChildProcess() override { ::prctl(PR_SET_PDEATHSIG, SIGTERM); }
};

QStringList arguments(const QVector<QRect> &monitors)
{
    QStringList result = {QStringLiteral("-displayfd"), QStringLiteral("1"),    QStringLiteral("-noreset"),
                          QStringLiteral("-nolisten"),  QStringLiteral("tcp"),  QStringLiteral("+xinerama"),
                          QStringLiteral("-extension"), QStringLiteral("RANDR")};
    for (const QRect &monitor : monitors) {
        result << QStringLiteral("-origin") << QStringLiteral("%1,%2").arg(monitor.x()).arg(monitor.y());
        result << QStringLiteral("-screen")
               << QStringLiteral("%1x%2x24").arg(monitor.width()).arg(monitor.height());
    }
    return result;
}

} // namespace

MonitorServer::MonitorServer(const QVector<QRect> &monitors)
{
    if (!m_outer.isRunning()) {
        m_error = m_outer.error();
        return;
    }
    m_process = std::make_unique<ServerProcess>();
    m_process->setProcessEnvironment(m_outer.environment());
    m_process->setStandardErrorFile(QProcess::nullDevice());
    m_process->start(QStringLiteral("Xephyr"), arguments(monitors), QIODevice::ReadOnly);
    QByteArray number;
    QElapsedTimer elapsed;
    elapsed.start();
    while (!number.endsWith('\n')) {
        if (m_process->state() == QProcess::NotRunning || elapsed.elapsed() > patience) {
            m_error = QStringLiteral("Xephyr did not start: ") + m_process->errorString();
            return;
        }
        m_process->waitForReadyRead(500);
        number += m_process->readAllStandardOutput();
    }
    m_display = ':' + number.trimmed();
}

MonitorServer::~MonitorServer()
{
    if (!m_process || m_process->state() == QProcess::NotRunning) {
        return;
    }
    m_process->terminate();
    if (!m_process->waitForFinished(5000)) {
        m_process->kill();
        m_process->waitForFinished();
    }
}
