#include "tools/simulator/SignalWatcher.h"

#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace simulator
{

namespace
{

int pipeEnds[2] = {-1, -1};
bool watching = false;

void tell(int number)
{
    const int savedError = errno;
    const auto byte = static_cast<unsigned char>(number);
    if (::write(pipeEnds[1], &byte, 1) < 0) {
        // The pipe is full of signals that were not read yet: one more says nothing new.
    }
    errno = savedError;
}

void setHandlers(void (*handler)(int))
{
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        std::signal(number, handler);
    }
}

} // namespace

SignalWatcher::SignalWatcher(QObject *parent)
    : QObject(parent)
{
    if (::pipe2(pipeEnds, O_NONBLOCK | O_CLOEXEC) != 0) {
        return;
    }
    watching = true;
    auto *notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        unsigned char number = 0;
        if (::read(pipeEnds[0], &number, 1) == 1) {
            Q_EMIT raised(number);
        }
    });
    setHandlers(tell);
    std::signal(SIGPIPE, SIG_IGN); // nobody reads what is printed: no reason to end
}

SignalWatcher::~SignalWatcher()
{
    if (!watching) {
        return;
    }
    watching = false;
    setHandlers(SIG_DFL);
    qDeleteAll(findChildren<QSocketNotifier *>());
    ::close(pipeEnds[0]);
    ::close(pipeEnds[1]);
}

} // namespace simulator
