#include "midi/BoundedCall.h"
#include "tests/support/main/Main.h"

#include <QTest>

#include <cstdlib>
#include <stdexcept>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace std::chrono_literals;

namespace
{

constexpr int status = 7;
constexpr int statusOfDestroyed = 99;

/// Stands for the static objects that a call may use.
struct Static {
    Q_DISABLE_COPY_MOVE(Static)
    Static() = default;
    ~Static() { std::_Exit(statusOfDestroyed); }
};

/// What becomes of a process that calls exit() after it has waited @p limit for a call that takes @p time.
int exitStatus(std::chrono::milliseconds limit, std::chrono::milliseconds time,
               std::chrono::milliseconds rest)
{
    const pid_t child = fork();
    if (child == 0) {
        static const Static object;
        callWithin(limit, [time] { std::this_thread::sleep_for(time); });
        std::this_thread::sleep_for(rest);
        std::exit(status); // NOLINT(concurrency-mt-unsafe)
    }
    int result = 0;
    waitpid(child, &result, 0);
    return WIFEXITED(result) ? WEXITSTATUS(result) : -1;
}

} // namespace

class tst_BoundedCall : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void endsWithTheCallAndPassesOnWhatItThrew()
    {
        bool called = false;
        QVERIFY(callWithin(20s, [&called] { called = true; }));
        QVERIFY(called);
        QVERIFY_EXCEPTION_THROWN(callWithin(20s, [] { throw std::runtime_error("no"); }), std::runtime_error);
    }

    void aCallLeftBehindKeepsTheStaticObjectsUntilTheProcessEnds()
    {
        QCOMPARE(exitStatus(0ms, 600s, 0ms), status);
        QCOMPARE(exitStatus(50ms, 600s, 0ms), status);
    }

    void withoutOneTheProcessEndsAsAlways()
    {
        QCOMPARE(exitStatus(20s, 0ms, 0ms), statusOfDestroyed);
        QCOMPARE(exitStatus(0ms, 1ms, 2000ms), statusOfDestroyed);
    }
};

QTEST_GUILESS_MAIN(tst_BoundedCall)
#include "tst_BoundedCall.moc"
