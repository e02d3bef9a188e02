#include "engine/KeySynthesis.h"
#include "engine/KnobPointer.h"
#include "engine/SystemClock.h"
#include "engine/platform/recording/Recorder.h"
#include "engine/platform/recording/RecordingAppearance.h"
#include "engine/platform/recording/RecordingInjector.h"
#include "engine/platform/x11/OSXMouseListener.h"
#include "engine/platform/x11/X11Pointer.h"
#include "tests/support/main/Main.h"
#include "tests/support/xserver/XServer.h"
#include "tests/support/xserver/XTestDevices.h"

#include <QEventLoop>
#include <QFile>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <vector>

using namespace std::chrono_literals;
using std::chrono::nanoseconds;

namespace
{

/// How long this thread could have run until now, had it had a processor.
nanoseconds keptWaiting()
{
    QFile file(QStringLiteral("/proc/thread-self/schedstat"));
    if (!file.open(QIODevice::ReadOnly)) {
        return 0ns;
    }
    return nanoseconds(file.readAll().split(' ').value(1).toLongLong());
}

} // namespace

/// How long the knob rests after the user's hand has moved the mouse of a real X server, in real time.
class tst_PauseAfterMovement : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void endsAQuarterOfASecondAfterTheLastMovement();
};

void tst_PauseAfterMovement::endsAQuarterOfASecondAfterTheLastMovement()
{
    const XServer server;
    QVERIFY2(server.isRunning(), qPrintable(server.error()));
    server.exportDisplay();
    XTestDevices devices(server.display());
    OSXMouseListener listener;
    Recorder recorder;
    RecordingInjector injector(recorder);
    RecordingAppearance appearance(recorder);
    KeySynthesis keys(injector);
    SystemClock clock;
    const std::chrono::steady_clock::time_point begin = std::chrono::steady_clock::now();
    const auto now = [&begin] { return nanoseconds(std::chrono::steady_clock::now() - begin); };
    QString problem;
    X11Pointer pointer(X11Connection::open(problem));
    KnobPointer knob(keys, pointer, appearance, clock);
    connect(&listener, &OSXMouseListener::userMovedMouse, &knob, &KnobPointer::userMovesMouse);
    listener.doWork();
    knob.setMode(KnobMode::Vertical);
    knob.touch();

    std::vector<nanoseconds> pauses;
    nanoseconds quickest = 1h;
    // The listener gathers for 10 ms what follows a report: the last movement falls into that, and behind it.
    for (int apart = 1; apart <= 23; apart += 2) {
        QEventLoop loop;
        int movementsLeft = 4;
        nanoseconds last{0};
        nanoseconds laterThan{0};
        QTimer hand;
        hand.setTimerType(Qt::PreciseTimer);
        connect(&hand, &QTimer::timeout, &loop, [&] {
            last = now();
            devices.moveMouseBy(1, 0);
            laterThan = now() - keptWaiting();
            if (--movementsLeft == 0) {
                hand.stop();
            }
        });
        // On a busy machine the hand rests for longer between two movements: a pause may end then, too.
        bool reported = false;
        bool ended = false;
        connect(&listener, &OSXMouseListener::userMovedMouse, &loop, [&] { reported = movementsLeft == 0; });
        connect(&knob, &KnobPointer::knobTouchShown, &loop, [&](bool shown) {
            if (shown && reported) {
                pauses.push_back(now() - last);
                quickest = std::min(quickest, now() - keptWaiting() - laterThan);
                ended = true;
                loop.quit();
            }
        });
        QTimer::singleShot(20s, &loop, &QEventLoop::quit);
        hand.start(apart);
        loop.exec();
        QVERIFY2(ended, "the pause has not ended");
    }

    std::sort(pauses.begin(), pauses.end());
    const auto inMs = [](nanoseconds time) { return double(time.count()) / 1e6; };
    qInfo("the knob's pause ends %.2f to %.2f ms after the last movement, half of them within %.2f ms",
          inMs(pauses.front()), inMs(pauses.back()), inMs(pauses[pauses.size() / 2]));
    QVERIFY(pauses.front() >= 250ms);
    QVERIFY(quickest <= 260ms);
}

QTEST_GUILESS_MAIN(tst_PauseAfterMovement)
#include "tst_PauseAfterMovement.moc"
