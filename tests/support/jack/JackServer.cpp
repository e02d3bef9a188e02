#include "tests/support/jack/JackServer.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QThread>

#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

/// A server that ends when the test program does, however that ends.
class ServerProcess : public QProcess
{
protected:
    void setupChildProcess() override { prctl(PR_SET_PDEATHSIG, SIGTERM); }
};

/// Where the library keeps sockets and semaphores.
QDir serverDir()
{
    return QDir(QStringLiteral("/dev/shm"));
}

QProcessEnvironment environmentFor(const QString &name)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("JACK_DEFAULT_SERVER"), name);
    environment.insert(QStringLiteral("JACK_NO_AUDIO_RESERVATION"), QStringLiteral("1"));
    environment.insert(QStringLiteral("JACK_NO_START_SERVER"), QStringLiteral("1"));
    return environment;
}

/// The descriptor of the locked file; the lock ends with it. -1 when others kept it for @p patienceMs. It
/// lies where the servers meet; the demo takes its turn by the same file.
int takeTurn(int patienceMs)
{
    const QString path = serverDir().filePath(QStringLiteral("veltrix-jack-%1.turn").arg(getuid()));
    const int file = open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    QElapsedTimer timer;
    timer.start();
    while (file >= 0 && flock(file, LOCK_EX | LOCK_NB) != 0) {
        if (timer.elapsed() > patienceMs) {
            close(file);
            return -1;
        }
        QThread::msleep(20);
    }
    return file;
}

} // namespace

JackServer::JackServer(int period)
    : m_turn(takeTurn(100000))
    , m_name(QStringLiteral("veltrix-test"))
{
    if (m_turn < 0) {
        m_error = QStringLiteral("another test keeps its JACK server");
        return;
    }
    start(period);
}

JackServer::~JackServer()
{
    stop();
    if (m_turn >= 0)
        close(m_turn);
}

void JackServer::start(int period)
{
    // A client that connects to the socket is served as soon as the server is ready.
    const QString socket = QStringLiteral("jack_%1_%2_0").arg(m_name).arg(getuid());
    serverDir().remove(socket);
    m_process = std::make_unique<ServerProcess>();
    m_process->setProcessEnvironment(environment());
    m_process->setProcessChannelMode(QProcess::MergedChannels);
    m_process->start(QStringLiteral(START_SERVER), {QStringLiteral("jack"), m_name, QString::number(period)});
    QElapsedTimer patience;
    patience.start();
    while (!serverDir().exists(socket)) {
        m_process->waitForReadyRead(10);
        if (m_process->state() == QProcess::NotRunning || patience.elapsed() > 20000) {
            m_error = QStringLiteral("jackd did not start: %1 %2")
                          .arg(m_process->errorString(),
                               QString::fromLocal8Bit(m_process->readAllStandardOutput()));
            stop();
            return;
        }
    }
}

QProcessEnvironment JackServer::environment() const
{
    return environmentFor(m_name);
}

QProcessEnvironment JackServer::environmentWithoutServer()
{
    return environmentFor(QStringLiteral("veltrix-test-none"));
}

void JackServer::pause()
{
    if (!isRunning())
        return;
    const auto process = static_cast<id_t>(processId());
    ::kill(static_cast<pid_t>(process), SIGSTOP);
    // On a busy machine it can answer once more before the signal stops it.
    siginfo_t state{};
    waitid(P_PID, process, &state, WSTOPPED | WEXITED | WNOWAIT);
}

void JackServer::resume()
{
    if (isRunning())
        ::kill(static_cast<pid_t>(processId()), SIGCONT);
}

void JackServer::kill()
{
    if (!isRunning())
        return;
    m_process->kill();
    m_process->waitForFinished(5000);
    m_killed = true;
}

void JackServer::stop()
{
    if (isRunning()) {
        resume();
        m_process->terminate();
        // It waits five seconds for its next cycle when a client has just died.
        if (!m_process->waitForFinished(15000))
            kill();
    }
    // Some die by a signal while they end, when a client has just died.
    const bool died = m_killed || (m_process && m_process->exitStatus() == QProcess::CrashExit);
    m_process.reset();
    m_killed = false;
    if (died)
        tidyUp();
    // What clients leave behind that end after the server.
    const QStringList files = serverDir().entryList({QStringLiteral("jack*_%1_*").arg(m_name)},
                                                    QDir::Files | QDir::System | QDir::Hidden);
    for (const QString &file : files)
        serverDir().remove(file);
}

// All servers of a machine share a table of eight and memory, and what one that was killed had of both is
// free again only after a server of the same name has ended in order.
void JackServer::tidyUp()
{
    const QString error = m_error;
    start(1024);
    stop();
    m_error = error;
}
