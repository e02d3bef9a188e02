#include "tests/bench/whole_program/KeyWatch.h"
#include "tests/bench/whole_program/PtyPair.h"
#include "tests/bench/whole_program/Statistics.h"

#include <QCoreApplication>
#include <QProcess>
#include <QThread>

#include <memory>
#include <vector>

/// The ways of a press into an X server with real input devices (the environment's DISPLAY), side by side:
/// `bench_input NAME COMMAND...`, where PORT in a command is the device's port. The first is what the others
/// are compared with.
namespace
{

constexpr int warmUp = 10; // presses of each that are not counted
constexpr int presses = 60;
constexpr int pause = 200;     // ms, in which the programs have painted what was pressed
constexpr int start = 120'000; // ms; an emulated machine is slow
constexpr int lateAtMost = 30; // s, for a key

struct Contestant {
    QString name;
    PtyPair port;
    QProcess process;
    Statistics latency;

    ~Contestant()
    {
        process.terminate();
        process.waitForFinished();
    }
};

qint64 waitFor(KeyWatch &watch, bool press)
{
    for (int i = 0; i < lateAtMost; ++i) {
        if (const qint64 time = watch.waitFor(press)) {
            return time;
        }
    }
    return 0;
}

double press(const Contestant &contestant, KeyWatch &watch)
{
    const qint64 begin = KeyWatch::now();
    contestant.port.write("BP3\n\r\n", 6);
    const qint64 end = waitFor(watch, true);
    contestant.port.write("BR3\n\r\n", 6);
    if (end == 0 || waitFor(watch, false) == 0) {
        qFatal("%s: a key did not arrive", qPrintable(contestant.name));
    }
    return static_cast<double>(end - begin);
}

std::unique_ptr<Contestant> begin(const QString &name, const QString &command)
{
    auto contestant = std::make_unique<Contestant>();
    contestant->name = name;
    QStringList words = command.split(QLatin1Char(' '));
    words.replaceInStrings(QStringLiteral("PORT"), contestant->port.path());
    contestant->process.setStandardErrorFile(QProcess::nullDevice());
    contestant->process.start(words.takeFirst(), words);
    if (!contestant->port.waitForReader("BR3\n\r\n", 6, start)) {
        qFatal("%s does not start", qPrintable(name));
    }
    return contestant;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    std::vector<std::unique_ptr<Contestant>> contestants;
    for (int i = 1; i + 1 < arguments.size(); i += 2) {
        contestants.push_back(begin(arguments.at(i), arguments.at(i + 1)));
    }
    // Until the server reads the devices that have been made, and the program's page has slid in.
    QThread::sleep(10);
    KeyWatch watch(qgetenv("DISPLAY"));
    if (!watch.isReady() || contestants.empty()) {
        qFatal("usage: bench_input NAME COMMAND..., with DISPLAY set");
    }
    for (int i = 0; i < warmUp + presses; ++i) {
        for (const auto &contestant : contestants) { // in turns: what else the machine does falls on all
            const double latency = press(*contestant, watch);
            if (i >= warmUp) {
                contestant->latency.add(latency);
            }
            QThread::msleep(pause);
        }
    }
    const Statistics &floor = contestants.front()->latency;
    Report report;
    for (const auto &contestant : contestants) {
        const double middle = contestant->latency.quantile(0.5);
        report.line(QStringLiteral("press to KeyPress, p50, ") + contestant->name,
                    middle / floor.quantile(0.5), 0, QStringLiteral(" x"),
                    QStringLiteral("%1 us; p99 %2 us")
                        .arg(middle / 1e3, 0, 'f', 0)
                        .arg(contestant->latency.quantile(0.99) / 1e3, 0, 'f', 0));
    }
    return 0;
}
