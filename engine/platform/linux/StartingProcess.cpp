#include "engine/platform/linux/StartingProcess.h"

#include <csignal>
#include <fcntl.h>
#include <initializer_list>
#include <unistd.h>

void prepareStartingProcess()
{
    for (const int signal : {SIGPIPE, SIGXFSZ}) {
        std::signal(signal, SIG_IGN);
    }
    for (int standard = 0; standard < 3; ++standard) {
        // The lowest free number: this one, when it is closed.
        if (fcntl(standard, F_GETFD) < 0 && open("/dev/null", O_RDWR) != standard) {
            return;
        }
    }
}
