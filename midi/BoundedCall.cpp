#include "midi/BoundedCall.h"

#include <csignal>
#include <future>
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

} // namespace

bool callWithin(std::chrono::milliseconds limit, std::function<void()> call)
{
    std::packaged_task<void()> task([call = std::move(call)]() mutable {
        blockBrokenPipeSignal();
        // Whatever the call owns is to be gone when it counts as ended.
        std::exchange(call, nullptr)();
    });
    std::future<void> end = task.get_future();
    std::thread thread(std::move(task));
    if (end.wait_for(limit) != std::future_status::ready) {
        thread.detach();
        return false;
    }
    thread.join();
    end.get();
    return true;
}
