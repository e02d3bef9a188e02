#include "tests/bench/whole_program/PtyPair.h"

#include <QElapsedTimer>
#include <QFile>
#include <QThread>

#include <cstdlib>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

PtyPair::PtyPair()
    : m_master(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC))
{
    char path[64];
    if (m_master < 0 || ::grantpt(m_master) != 0 || ::unlockpt(m_master) != 0 ||
        ::ptsname_r(m_master, path, sizeof path) != 0) {
        return;
    }
    m_path = QFile::decodeName(path);
    m_slave = ::open(path, O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios settings = {};
    ::tcgetattr(m_slave, &settings);
    ::cfmakeraw(&settings);
    ::tcsetattr(m_slave, TCSANOW, &settings);
}

PtyPair::~PtyPair()
{
    if (m_slave >= 0) {
        ::close(m_slave);
    }
    if (m_master >= 0) {
        ::close(m_master);
    }
}

void PtyPair::write(const char *bytes, int length) const
{
    if (::write(m_master, bytes, static_cast<size_t>(length)) != length) {
        qFatal("cannot write to the pseudo-terminal");
    }
}

bool PtyPair::waitForReader(const char *message, int length, int timeoutMs) const
{
    write(message, length);
    QElapsedTimer elapsed;
    elapsed.start();
    int waiting = 0;
    do {
        QThread::msleep(20);
        ::ioctl(m_slave, FIONREAD, &waiting);
    } while (waiting > 0 && elapsed.elapsed() < timeoutMs);
    return waiting == 0;
}
