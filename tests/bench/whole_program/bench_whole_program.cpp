#include "mapping/ZRButtonMap.h"
#include "tests/bench/whole_program/Conditions.h"
#include "tests/bench/whole_program/KeyWatch.h"
#include "tests/bench/whole_program/ProcessFigures.h"
#include "tests/bench/whole_program/PtyPair.h"
#include "tests/bench/whole_program/Statistics.h"
#include "tests/e2e/support/Child.h"
#include "tests/e2e/support/ProgramHome.h"
#include "tests/support/xserver/XServer.h"

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QThread>

#include <array>
#include <functional>

namespace
{

constexpr int warmUp = 200; // presses of each that are not counted
constexpr int rounds = 9;
constexpr int pressesInRound = 500; // of each
constexpr int idleSeconds = 20;
constexpr int libraryMappings = 2000;
constexpr int start = 5000; // ms, patience with programs that start

/// A program that turns the device's reports into keys.
struct Contestant {
    PtyPair port;
    std::unique_ptr<Child> program;
};

/// What its presses took in one round, in ns.
struct Round {
    Statistics latency;
    double cpuTimePerEvent = 0;
};

/// One press and release; returns ns from the write to the arrival of the press.
double press(const Contestant &contestant, KeyWatch &watch)
{
    const std::int64_t begin = KeyWatch::now();
    contestant.port.write("BP3\n\r\n", 6);
    const std::int64_t end = watch.waitFor(true);
    contestant.port.write("BR3\n\r\n", 6);
    if (end == 0 || watch.waitFor(false) == 0) {
        qFatal("a key did not arrive");
    }
    return static_cast<double>(end - begin);
}

using Rounds = std::array<Round, 2>; // the program's and the relay's

Rounds measureRound(const std::array<Contestant *, 2> &contestants, KeyWatch &watch)
{
    Rounds result;
    std::array<qint64, 2> before{};
    for (std::size_t i = 0; i < 2; ++i) {
        before[i] = processfigures::cpuTime(contestants[i]->program->processId());
    }
    for (int count = 0; count < pressesInRound; ++count) {
        // In turns, so that whatever else the machine does falls on both.
        for (std::size_t i = 0; i < 2; ++i) {
            result[i].latency.add(press(*contestants[i], watch));
            QThread::usleep(300);
        }
    }
    QThread::msleep(20);
    for (std::size_t i = 0; i < 2; ++i) {
        const auto cpuTime = processfigures::cpuTime(contestants[i]->program->processId()) - before[i];
        result[i].cpuTimePerEvent = static_cast<double>(cpuTime) / (2.0 * pressesInRound);
    }
    return result;
}

/// The median over the rounds: a round in which the machine was busy elsewhere does not decide.
void reportRatio(const QString &what, const std::vector<Rounds> &all, double target,
                 const std::function<double(const Round &)> &figure, Report &report)
{
    Statistics ratios;
    Statistics own;
    Statistics floor;
    for (const Rounds &round : all) {
        own.add(figure(round[0]));
        floor.add(figure(round[1]));
        ratios.add(figure(round[0]) / figure(round[1]));
    }
    report.line(what, ratios.quantile(0.5), target, QStringLiteral(" x"),
                QStringLiteral("%1 us to %2 us; rounds %3 to %4 x")
                    .arg(own.quantile(0.5) / 1e3, 0, 'f', 1)
                    .arg(floor.quantile(0.5) / 1e3, 0, 'f', 1)
                    .arg(ratios.quantile(0), 0, 'f', 2)
                    .arg(ratios.quantile(1), 0, 'f', 2));
}

/// What a state of the program may cost at most, 0 for anything.
struct Targets {
    double p50;
    double p99;
    double cpuTime;
};
constexpr Targets hiddenTargets = {1.15, 1.3, 1.6};
constexpr Targets shownTargets = {1.25, 0, 3}; // what is held is also painted then

void compare(Contestant &program, Contestant &relay, KeyWatch &watch, const Targets &targets,
             const QString &state, Report &report)
{
    const std::array<Contestant *, 2> contestants = {&program, &relay};
    for (Contestant *contestant : contestants) {
        for (int i = 0; i < warmUp; ++i) {
            press(*contestant, watch);
        }
    }
    std::vector<Rounds> all;
    all.reserve(rounds);
    for (int i = 0; i < rounds; ++i) {
        all.push_back(measureRound(contestants, watch));
    }
    reportRatio(
        QStringLiteral("press to KeyPress, p50, against the relay") + state, all, targets.p50,
        [](const Round &round) { return round.latency.quantile(0.5); }, report);
    reportRatio(
        QStringLiteral("press to KeyPress, p99, against the relay") + state, all, targets.p99,
        [](const Round &round) { return round.latency.quantile(0.99); }, report);
    reportRatio(
        QStringLiteral("processor time per event, against the relay") + state, all, targets.cpuTime,
        [](const Round &round) { return round.cpuTimePerEvent; }, report);
}

void measureIdle(qint64 pid, const QString &state, Report &report)
{
    QThread::sleep(5); // what follows the start, such as looks at ports that have just come, is over then
    const qint64 cpuBefore = processfigures::cpuTime(pid);
    const qint64 wakeUpsBefore = processfigures::wakeUps(pid);
    const std::int64_t begin = KeyWatch::now();
    QThread::sleep(idleSeconds);
    const auto elapsed = static_cast<double>(KeyWatch::now() - begin);
    const auto cpu = static_cast<double>(processfigures::cpuTime(pid) - cpuBefore);
    const auto wakeUps = static_cast<double>(processfigures::wakeUps(pid) - wakeUpsBefore);
    report.line(QStringLiteral("idle, %1: processor").arg(state), 100.0 * cpu / elapsed, 0.02,
                QStringLiteral(" %"));
    report.line(QStringLiteral("idle, %1: wake-ups of the main thread").arg(state), wakeUps / elapsed * 1e9,
                2.1, QStringLiteral(" /s")); // the scan's two
}

void measureMemory(qint64 program, qint64 empty, const QString &state, double target, Report &report)
{
    const qint64 own = processfigures::ownMemory(program);
    const qint64 floor = processfigures::ownMemory(empty);
    qint64 watchdog = 0;
    for (const qint64 child : processfigures::children(program)) {
        watchdog += processfigures::unsharedMemory(child);
    }
    report.line(QStringLiteral("private memory, against an empty program") + state,
                static_cast<double>(own) / static_cast<double>(floor), target, QStringLiteral(" x"),
                QStringLiteral("%1 KiB to %2 KiB; its watchdog %3 KiB").arg(own).arg(floor).arg(watchdog));
}

void fill(ZRButtonMap &map)
{
    for (int button = 0; button < ActionTable::controlCount; ++button) {
        shortCut action;
        action.key1 = 'A' + button; // as the relay has it
        action.key2 = action.key3 = -1;
        action.label = QStringLiteral("Key %1").arg(button);
        map.setAction(button, 0, action);
    }
}

void writeMap(const ProgramHome &home)
{
    ZRButtonMap map(QStringLiteral("current_map"));
    fill(map);
    home.writeCurrentMap(map);
}

/// What a large library leaves in memory once it has been read.
void measureLibrary(const XServer &server, qint64 empty, Report &report)
{
    std::vector<std::unique_ptr<ZRButtonMap>> maps;
    QList<const ZRButtonMap *> list;
    for (int i = 0; i < libraryMappings; ++i) {
        maps.push_back(std::make_unique<ZRButtonMap>(QStringLiteral("Mapping %1").arg(i)));
        fill(*maps.back());
        list.append(maps.back().get());
    }
    const ProgramHome home;
    home.writeLibrary(list);
    const Child program(QStringLiteral(PROGRAM), {}, conditions::environment(server, home),
                        Child::Output::Error);
    QThread::sleep(10);
    measureMemory(program.processId(), empty,
                  QStringLiteral(", a library of %1 mappings").arg(libraryMappings), 1.5, report);
}

} // namespace

int main(int argc, char **argv)
{
    conditions::moveTo(conditions::Core::First);
    const QCoreApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("veltrix.mapping.info=false"));
    const XServer server;
    if (!server.isRunning()) {
        qFatal("%s", qPrintable(server.error()));
    }
    KeyWatch watch(server.display());
    const ProgramHome home;
    writeMap(home);
    const QProcessEnvironment ours = conditions::environment(server, home);

    conditions::moveTo(conditions::Core::Last);
    Contestant program;
    program.program = std::make_unique<Child>(QStringLiteral(PROGRAM),
                                              QStringList{QStringLiteral("--port"), program.port.path()},
                                              ours, Child::Output::Error);
    Contestant relay;
    relay.program = std::make_unique<Child>(QStringLiteral(RELAY), QStringList{relay.port.path()}, ours,
                                            Child::Output::Error);
    const ProgramHome emptyHome;
    Child empty(QStringLiteral(EMPTY_PROGRAM), {}, conditions::environment(server, emptyHome),
                Child::Output::Error);
    conditions::moveTo(conditions::Core::First);
    if (!watch.isReady() || !program.program->waitForLine(QStringLiteral(": plugged"), start) ||
        !relay.port.waitForReader("BR3\n\r\n", 6, start)) {
        qFatal("not everything is running");
    }

    Report report;
    // Until the page of the device has slid in.
    QThread::sleep(3);
    const QString shown = QStringLiteral(", window shown");
    measureMemory(program.program->processId(), empty.processId(), shown, 1, report);
    compare(program, relay, watch, shownTargets, shown, report);
    // As it runs from day to day: behind its tray icon.
    if (!watch.hideProgram()) {
        qFatal("the window does not hide");
    }
    measureMemory(program.program->processId(), empty.processId(), QString(), 1, report);
    compare(program, relay, watch, hiddenTargets, QString(), report);
    measureIdle(program.program->processId(), QStringLiteral("connected"), report);
    program.program.reset();
    measureLibrary(server, empty.processId(), report);

    const ProgramHome idleHome;
    const Child idle(QStringLiteral(PROGRAM), {}, conditions::environment(server, idleHome),
                     Child::Output::Error);
    measureIdle(idle.processId(), QStringLiteral("not connected"), report);
    return report.missed() == 0 ? 0 : 1;
}
