#include "tools/simulator/posix/PtyPort.h"

#include <QDir>
#include <QFile>
#include <QSocketNotifier>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>
#include <utility>

namespace simulator
{

namespace
{

constexpr int mostPendingBytes = 64 * 1024;

void closeDescriptor(int &descriptor)
{
    if (descriptor >= 0) {
        ::close(descriptor);
    }
    descriptor = -1;
}

bool makeRaw(int terminal)
{
    termios settings = {};
    if (::tcgetattr(terminal, &settings) != 0) {
        return false;
    }
    ::cfmakeraw(&settings);
    return ::tcsetattr(terminal, TCSANOW, &settings) == 0;
}

/// Whether another process of this user has the file behind @p descriptor open. By device and inode: another
/// file system of pseudo-terminals, a container's, has files of the same path.
bool isOpenElsewhere(int descriptor)
{
    struct stat own = {};
    if (::fstat(descriptor, &own) != 0) {
        return false;
    }
    const QString self = QString::number(::getpid());
    const QStringList processes = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &process : processes) {
        if (process == self || !process.at(0).isDigit()) {
            continue;
        }
        const QDir descriptors(QStringLiteral("/proc/%1/fd").arg(process));
        const QStringList names =
            descriptors.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
        for (const QString &name : names) {
            struct stat other = {};
            if (::stat(QFile::encodeName(descriptors.filePath(name)).constData(), &other) == 0 &&
                other.st_dev == own.st_dev && other.st_ino == own.st_ino) {
                return true;
            }
        }
    }
    return false;
}

} // namespace

PtyPort::PtyPort(const QString &link)
    : m_link(link)
{
}

PtyPort::~PtyPort()
{
    unplug();
}

bool PtyPort::claim()
{
    if (!m_link.claim()) {
        m_error = m_link.errorString();
        return false;
    }
    return true;
}

bool PtyPort::plug()
{
    if (isPlugged()) {
        return true;
    }
    if (!makeTerminal()) {
        unplug();
        return false;
    }
    watchOpenings();
    if (!m_link.publish(m_slavePath)) {
        m_error = m_link.errorString();
        unplug();
        return false;
    }
    m_published = true;
    Q_EMIT pluggedChanged(true);
    return true;
}

bool PtyPort::makeTerminal()
{
    m_master = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (m_master < 0 || ::grantpt(m_master) != 0 || ::unlockpt(m_master) != 0) {
        return fail("pseudo-terminal");
    }
    char path[64];
    if (::ptsname_r(m_master, path, sizeof path) != 0) {
        return fail("ptsname");
    }
    // Kept open for the whole time: the last close of a slave would put its settings back to those of a
    // terminal that echoes, and only through it can the exclusive mode be ended that a program leaves behind
    // when it is killed.
    m_slave = ::open(path, O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (m_slave < 0 || !makeRaw(m_slave) || ::fchmod(m_slave, S_IRUSR | S_IWUSR) != 0) {
        return fail(path);
    }
    if (::fcntl(m_master, F_SETFL, O_NONBLOCK) != 0) {
        return fail("fcntl");
    }
    m_slavePath = QFile::decodeName(path);

    m_readNotifier = std::make_unique<QSocketNotifier>(m_master, QSocketNotifier::Read);
    connect(m_readNotifier.get(), &QSocketNotifier::activated, this, &PtyPort::readFromProgram);
    m_writeNotifier = std::make_unique<QSocketNotifier>(m_master, QSocketNotifier::Write);
    m_writeNotifier->setEnabled(false);
    connect(m_writeNotifier.get(), &QSocketNotifier::activated, this, &PtyPort::writePending);
    return true;
}

void PtyPort::watchOpenings()
{
    m_openings = 0;
    m_inotify = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    const bool watching =
        m_inotify >= 0 &&
        ::inotify_add_watch(m_inotify, QFile::encodeName(m_slavePath).constData(), IN_OPEN | IN_CLOSE) >= 0;
    if (!watching) {
        // Without the means to know, count the port as opened: nothing is held back then.
        m_openings = 1;
        return;
    }
    m_openNotifier = std::make_unique<QSocketNotifier>(m_inotify, QSocketNotifier::Read);
    connect(m_openNotifier.get(), &QSocketNotifier::activated, this, &PtyPort::onDirectoryEvents);
}

void PtyPort::onDirectoryEvents()
{
    alignas(inotify_event) char events[4096];
    int openings = m_openings;
    ssize_t length = 0;
    while ((length = ::read(m_inotify, events, sizeof events)) > 0) {
        for (ssize_t at = 0; at < length;) {
            inotify_event event = {};
            std::memcpy(&event, events + at, sizeof event);
            openings += (event.mask & IN_OPEN) != 0 ? 1 : 0;
            openings -= (event.mask & IN_CLOSE) != 0 ? 1 : 0;
            at += static_cast<ssize_t>(sizeof event + event.len);
        }
    }
    // Two openings at once may be told as one, so "nobody" is only believed after a look.
    if (openings <= 0) {
        openings = isOpenElsewhere(m_slave) ? 1 : 0;
    }
    setOpenings(openings);
}

void PtyPort::setOpenings(int openings)
{
    const bool wasOpened = isOpened();
    m_openings = openings;
    if (wasOpened == isOpened()) {
        return;
    }
    if (!isOpened()) {
        ::ioctl(m_slave, TIOCNXCL);
        ::tcflush(m_slave, TCIFLUSH);
        makeRaw(m_slave);
        m_pending.clear();
        m_lost = 0;
        m_writeNotifier->setEnabled(false);
    }
    Q_EMIT openedChanged(isOpened());
}

void PtyPort::unplug()
{
    const bool wasOpened = isOpened();
    m_link.withdraw();
    m_openNotifier.reset();
    m_readNotifier.reset();
    m_writeNotifier.reset();
    closeDescriptor(m_inotify);
    closeDescriptor(m_slave);
    closeDescriptor(m_master);
    m_slavePath.clear();
    m_pending.clear();
    m_lost = 0;
    m_openings = 0;
    if (wasOpened) {
        Q_EMIT openedChanged(false);
    }
    if (m_published) {
        Q_EMIT pluggedChanged(false);
    }
    m_published = false;
}

void PtyPort::send(const QByteArray &bytes)
{
    if (m_openNotifier) {
        onDirectoryEvents(); // an opening a moment ago counts, although the event loop has not come to it yet
    }
    if (!isPlugged() || !isOpened()) {
        return;
    }
    if (m_lost > 0 || m_pending.size() + bytes.size() > mostPendingBytes) {
        if (m_lost == 0) {
            Q_EMIT overrun();
        }
        m_lost += bytes.size();
        return;
    }
    m_pending += bytes;
    writePending();
}

bool PtyPort::isDelivered() const
{
    int waiting = 0;
    if (isPlugged() && isOpened()) {
        ::ioctl(m_slave, FIONREAD, &waiting);
    }
    return waiting == 0 && m_pending.isEmpty();
}

void PtyPort::writePending()
{
    while (!m_pending.isEmpty()) {
        const ssize_t written =
            ::write(m_master, m_pending.constData(), static_cast<size_t>(m_pending.size()));
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            break;
        }
        m_pending.remove(0, static_cast<int>(written));
    }
    m_writeNotifier->setEnabled(!m_pending.isEmpty());
    if (m_pending.isEmpty() && m_lost > 0) {
        Q_EMIT overrunEnded(std::exchange(m_lost, 0));
    }
}

void PtyPort::readFromProgram()
{
    char bytes[4096];
    const ssize_t length = ::read(m_master, bytes, sizeof bytes);
    if (length > 0) {
        Q_EMIT received(QByteArray(bytes, static_cast<int>(length)));
    }
}

bool PtyPort::fail(const char *what)
{
    m_error = QStringLiteral("%1: %2").arg(QString::fromLocal8Bit(what),
                                           QString::fromLocal8Bit(std::strerror(errno)));
    return false;
}

} // namespace simulator
