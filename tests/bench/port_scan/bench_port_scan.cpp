// What one scan for the device costs: while nothing changes, and when the ports have to be listed.
// Ends with status 1 when idling would cost more than a hundredth of a percent of a core.

#include "device/QtPortLister.h"
#include "device/SerialProtocol.h"

#include <QCoreApplication>

#include <cstdio>
#include <ctime>

namespace
{

/// The part of a core, in percent, that scans may take while nothing changes.
constexpr double allowedPercent = 0.01;

double cpuMicroseconds()
{
    timespec now = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e6 + static_cast<double>(now.tv_nsec) / 1e3;
}

template <typename Work>
double costOf(int rounds, Work work)
{
    const double before = cpuMicroseconds();
    for (int i = 0; i < rounds; ++i) {
        work();
    }
    return (cpuMicroseconds() - before) / rounds;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication app(argc, argv);
    QtPortLister lister;
    const int ports = lister.availablePorts().size();
    const double full = costOf(50, [&lister] { lister.availablePorts(); });
    const double stamp = costOf(10000, [&lister] { lister.changeStamp(); });

    SerialProtocol link(std::make_unique<PortFinder>(std::make_unique<QtPortLister>()));
    for (int i = 0; i <= PortFinder::settlingLooks; ++i) {
        link.scannSerial();
    }
    // Whole periods, so that the full look that each of them ends with is counted.
    const double scan = costOf(2 * (PortFinder::cheapLooksAtMost + 1), [&link] { link.scannSerial(); });
    const double percent = scan / (SerialProtocol::scanIntervalMs * 1e3) * 100;

    std::printf("listing %d ports: %.1f us, looking at the stamp: %.2f us\n", ports, full, stamp);
    std::printf("idle scan on average: %.2f us, %.5f %% of a core\n", scan, percent);
    return percent <= allowedPercent ? 0 : 1;
}
