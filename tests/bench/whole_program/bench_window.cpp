#include "mapping/SpecialAction.h"
#include "mapping/ZRButtonMap.h"
#include "tests/bench/whole_program/Conditions.h"
#include "tests/bench/whole_program/ProcessFigures.h"
#include "tests/bench/whole_program/PtyPair.h"
#include "tests/bench/whole_program/ScreenWatch.h"
#include "tests/bench/whole_program/Statistics.h"
#include "tests/e2e/support/Child.h"
#include "tests/e2e/support/ProgramHome.h"
#include "tests/support/xserver/XServer.h"

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QThread>

#include <cmath>

namespace
{

constexpr int patience = 20000; // ms
constexpr int starts = 15;
constexpr int slides = 10;
constexpr int gameSeconds = 5;
constexpr double frame = 16e6; // ns

constexpr std::int64_t slideDelay = 1'000'000'000;
// Beyond it the pages move by less than a pixel in a frame, so that not every frame can be told.
constexpr std::int64_t visibleSlide = 400'000'000;

// Letters at both edges of the device's page, out of the ball's way for the time of a slide.
constexpr int watchedRow = 632;

/// ns from the start of the program until the X server shows its window.
double startToWindow(const QString &program, const QProcessEnvironment &environment, ScreenWatch &watch)
{
    watch.forget();
    conditions::moveTo(conditions::Core::Last);
    const std::int64_t begin = ScreenWatch::now();
    const Child child(program, {}, environment, Child::Output::Error);
    conditions::moveTo(conditions::Core::First);
    const std::int64_t end = watch.waitForWindow(patience);
    if (end == 0) {
        qFatal("no window of %s", qPrintable(program));
    }
    return static_cast<double>(end - begin);
}

void measureStart(const XServer &server, ScreenWatch &watch, Report &report)
{
    const ProgramHome home;
    const QProcessEnvironment environment = conditions::environment(server, home);
    Statistics own;
    Statistics floor;
    Statistics ratios;
    startToWindow(QStringLiteral(PROGRAM), environment, watch); // the first one of all copies its files
    for (int i = 0; i < starts; ++i) {
        const double program = startToWindow(QStringLiteral(PROGRAM), environment, watch);
        const double empty = startToWindow(QStringLiteral(EMPTY_PROGRAM), environment, watch);
        own.add(program);
        floor.add(empty);
        ratios.add(program / empty);
    }
    report.line(QStringLiteral("start to window shown, against an empty program"), ratios.quantile(0.5), 1.25,
                QStringLiteral(" x"),
                QStringLiteral("%1 ms to %2 ms; %3 to %4 x")
                    .arg(own.quantile(0.5) / 1e6, 0, 'f', 0)
                    .arg(floor.quantile(0.5) / 1e6, 0, 'f', 0)
                    .arg(ratios.quantile(0), 0, 'f', 2)
                    .arg(ratios.quantile(1), 0, 'f', 2));
}

void writeChord(const ProgramHome &home)
{
    ZRButtonMap map(QStringLiteral("current_map"));
    const SpecialAction chord[] = {SpecialAction::Horizontal, SpecialAction::Vertical,
                                   SpecialAction::Circular};
    for (int button = 0; button < 3; ++button) {
        shortCut action;
        action.key1 = SPECIAL_ACTION;
        action.key2 = static_cast<int>(chord[button]);
        map.setAction(button, 0, action);
    }
    home.writeCurrentMap(map);
}

/// How a slide came onto the screen.
struct Slide {
    int shown = 0;   // different frames
    int dropped = 0; // those missing between them
    double longestGap = 0;
};

/// Watches the slide that is asked for with @p reports.
Slide watchSlide(const PtyPair &port, const QByteArray &reports, const ScreenWatch &watch)
{
    port.write(reports.constData(), reports.size());
    const std::int64_t begin = ScreenWatch::now();
    QThread::msleep(900);
    QByteArray last = watch.row(watchedRow);
    std::int64_t first = 0;
    std::int64_t previous = 0;
    Slide slide;
    while (first == 0 || previous - first < visibleSlide) {
        QThread::usleep(500);
        const QByteArray row = watch.row(watchedRow);
        const std::int64_t time = ScreenWatch::now();
        if (time - begin > 3 * slideDelay) {
            break;
        }
        if (row == last) {
            continue;
        }
        last = row;
        if (first == 0) {
            first = time;
        } else {
            const auto gap = static_cast<double>(time - previous);
            slide.longestGap = std::max(slide.longestGap, gap);
            slide.dropped += std::max(0, static_cast<int>(std::lround(gap / frame)) - 1);
        }
        previous = time;
        ++slide.shown;
    }
    if (slide.shown < 2) {
        qFatal("the page does not slide");
    }
    QThread::msleep(300); // to its end
    return slide;
}

void measurePages(const XServer &server, ScreenWatch &watch, Report &report)
{
    const ProgramHome home;
    writeChord(home);
    watch.forget();
    const PtyPair port;
    conditions::moveTo(conditions::Core::Last);
    Child program(QStringLiteral(PROGRAM), {QStringLiteral("--port"), port.path()},
                  conditions::environment(server, home), Child::Output::Error);
    conditions::moveTo(conditions::Core::First);
    if (watch.waitForWindow(patience) == 0 || !program.waitForLine(QStringLiteral(": plugged"), patience)) {
        qFatal("the program does not run");
    }
    QThread::sleep(3); // until the device's page has slid in

    Statistics dropped;
    Statistics gaps;
    Statistics shown;
    const auto add = [&](const Slide &slide) {
        dropped.add(slide.dropped);
        gaps.add(slide.longestGap);
        shown.add(slide.shown);
    };
    for (int i = 0; i < slides; i += 2) {
        add(watchSlide(port, "BP0\n\r\nBP1\n\r\nBP2\n\r\n", watch));
        if (i == 0) {
            const qint64 before = processfigures::cpuTime(program.processId());
            QThread::sleep(gameSeconds);
            const auto spent = static_cast<double>(processfigures::cpuTime(program.processId()) - before);
            report.line(QStringLiteral("a game's frame, model and paint"),
                        spent / (gameSeconds * 1e9 / frame) / 1e6, 2, QStringLiteral(" ms"),
                        QStringLiteral("processor time over %1 s").arg(gameSeconds));
        }
        add(watchSlide(port, "BR0\n\r\nBP1\n\r\nBR1\n\r\nBR2\n\r\n", watch));
    }
    // A quarter of them: what is busy elsewhere on the machine takes frames too, but not from every slide.
    report.line(QStringLiteral("frames dropped in a slide"), dropped.quantile(0.25), 1, QString(),
                QStringLiteral("%1 shown in 400 ms, the longest for %2 ms; %3 to %4 dropped")
                    .arg(shown.quantile(0.5))
                    .arg(gaps.quantile(0.25) / 1e6, 0, 'f', 0)
                    .arg(dropped.quantile(0))
                    .arg(dropped.quantile(1)));
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
    ScreenWatch watch(server.display());
    if (!watch.isReady()) {
        qFatal("no connection to the X server");
    }
    Report report;
    measureStart(server, watch, report);
    measurePages(server, watch, report);
    return report.missed() == 0 ? 0 : 1;
}
