#include "engine/platform/x11/QuitRequests.h"

#include "engine/platform/PlatformLog.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace
{

constexpr std::array<int, 3> quitSignals{SIGTERM, SIGINT, SIGHUP};

// A signal handler has no context argument.
volatile sig_atomic_t handlerPipe = -1;

void onSignal(int)
{
    const int error = errno;
    const char byte = 'q';
    // A full pipe already says what there is to say.
    [[maybe_unused]] const ssize_t written = write(handlerPipe, &byte, 1);
    errno = error;
}

} // namespace

QuitRequests::QuitRequests(std::function<void()> quit)
    : m_quit(std::move(quit))
{
    if (pipe2(m_pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        qCWarning(lcPlatform, "signals end the program without a tidy-up: no pipe could be made");
        return;
    }
    handlerPipe = m_pipe[1];
    m_notifier = new QSocketNotifier(m_pipe[0], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &QuitRequests::drain);

    struct sigaction action {
    };
    action.sa_handler = onSignal;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (size_t i = 0; i < quitSignals.size(); ++i) {
        sigaction(quitSignals[i], nullptr, &m_previous[i]);
        if (quitSignals[i] == SIGTERM || m_previous[i].sa_handler != SIG_IGN) {
            sigaction(quitSignals[i], &action, nullptr);
        }
    }
}

QuitRequests::~QuitRequests()
{
    if (m_pipe[0] < 0) {
        return;
    }
    for (size_t i = 0; i < quitSignals.size(); ++i) {
        sigaction(quitSignals[i], &m_previous[i], nullptr);
    }
    handlerPipe = -1;
    close(m_pipe[0]);
    close(m_pipe[1]);
}

void QuitRequests::drain()
{
    char bytes[16];
    while (read(m_pipe[0], bytes, sizeof bytes) > 0) {
    }
    qCInfo(lcPlatform, "asked to quit by a signal");
    m_quit();
}
