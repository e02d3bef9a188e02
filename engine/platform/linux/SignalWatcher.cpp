#include "engine/platform/linux/SignalWatcher.h"

#include "engine/platform/PlatformLog.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace
{

constexpr std::array<int, 3> watched{SIGTERM, SIGINT, SIGHUP};

// A signal handler has no context argument.
volatile sig_atomic_t handlerPipe = -1;

void onSignal(int number)
{
    const int error = errno;
    const auto byte = static_cast<unsigned char>(number);
    // A full pipe already says what there is to say.
    [[maybe_unused]] const ssize_t written = write(handlerPipe, &byte, 1);
    errno = error;
}

} // namespace

SignalWatcher::SignalWatcher(std::function<void(int)> raised)
    : m_raised(std::move(raised))
{
    if (pipe2(m_pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        qCWarning(lcPlatform, "signals end the program without a tidy-up: no pipe could be made");
        return;
    }
    handlerPipe = m_pipe[1];
    m_notifier = new QSocketNotifier(m_pipe[0], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &SignalWatcher::drain);

    struct sigaction action {
    };
    action.sa_handler = onSignal;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (size_t i = 0; i < watched.size(); ++i) {
        sigaction(watched[i], nullptr, &m_previous[i]);
        if (watched[i] == SIGTERM || m_previous[i].sa_handler != SIG_IGN) {
            sigaction(watched[i], &action, nullptr);
        }
    }
}

SignalWatcher::~SignalWatcher()
{
    if (m_pipe[0] < 0) {
        return;
    }
    for (size_t i = 0; i < watched.size(); ++i) {
        sigaction(watched[i], &m_previous[i], nullptr);
    }
    handlerPipe = -1;
    close(m_pipe[0]);
    close(m_pipe[1]);
}

void SignalWatcher::drain()
{
    unsigned char numbers[16];
    ssize_t count = read(m_pipe[0], numbers, sizeof numbers);
    const int first = count > 0 ? numbers[0] : 0;
    while (count > 0) {
        count = read(m_pipe[0], numbers, sizeof numbers);
    }
    if (first != 0) {
        m_raised(first);
    }
}
