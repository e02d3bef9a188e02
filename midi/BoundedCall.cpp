#include "midi/BoundedCall.h"

#include <QtGlobal>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <memory>
#include <thread>
#include <utility>

namespace
{

// The JACK library writes to its server's socket, which may have lost its other end.
void blockBrokenPipeSignal()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

std::atomic<int> callsUnderWay{0};

struct UnderWay {
    UnderWay() { ++callsUnderWay; }
    ~UnderWay() { --callsUnderWay; }
    Q_DISABLE_COPY_MOVE(UnderWay)
};

void endAtOnce(int status, void *)
{
    if (callsUnderWay > 0) {
        std::fflush(nullptr);
        std::_Exit(status);
    }
}

} // namespace

bool callWithin(std::chrono::milliseconds limit, std::function<void()> call)
{
    std::packaged_task<void()> task([call = std::move(call)]() mutable {
        blockBrokenPipeSignal();
        // Whatever the call owns is to be gone when it counts as ended.
        std::exchange(call, nullptr)();
    });
    std::future<void> end = task.get_future();
    std::thread thread([mark = std::make_unique<UnderWay>(), task = std::move(task)]() mutable { task(); });
    if (end.wait_for(limit) != std::future_status::ready) {
        // Of what exit() does, this comes before the static objects that there are now are destroyed.
        on_exit(&endAtOnce, nullptr);
        thread.detach();
        return false;
    }
    thread.join();
    end.get();
    return true;
}
