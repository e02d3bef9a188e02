#include "tests/bench/whole_program/Conditions.h"

#include "tests/e2e/support/ProgramHome.h"
#include "tests/support/xserver/XServer.h"

#include <sched.h>

QProcessEnvironment conditions::environment(const XServer &server, const ProgramHome &home)
{
    QProcessEnvironment result = server.environment();
    home.addTo(result);
    result.insert(QStringLiteral("JACK_NO_START_SERVER"), QStringLiteral("1"));
    result.insert(QStringLiteral("JACK_DEFAULT_SERVER"), QStringLiteral("none"));
    result.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("disabled:"));
    return result;
}

void conditions::moveTo(Core core)
{
    static const cpu_set_t allowed = [] {
        cpu_set_t cores;
        sched_getaffinity(0, sizeof cores, &cores);
        return cores;
    }();
    int chosen = -1;
    for (int number = 0; number < CPU_SETSIZE; ++number) {
        if (CPU_ISSET(static_cast<unsigned>(number), &allowed) && (chosen < 0 || core == Core::Last)) {
            chosen = number;
        }
    }
    cpu_set_t cores;
    CPU_ZERO(&cores);
    CPU_SET(static_cast<unsigned>(chosen), &cores);
    sched_setaffinity(0, sizeof cores, &cores);
}
