#include "tests/support/jack/JackServer.h"

#include <QCoreApplication>

#include <cstdio>
#include <unistd.h>

/// Runs the tests' JACK server, prints its name, and ends with standard input.
int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const JackServer server;
    if (!server.isRunning()) {
        std::fprintf(stderr, "jack_keeper: %s\n", qPrintable(server.error()));
        return 1;
    }
    std::printf("ready %s\n", qPrintable(server.name()));
    std::fflush(stdout);
    char bytes[64];
    while (read(STDIN_FILENO, bytes, sizeof bytes) > 0) {
    }
    return 0;
}
