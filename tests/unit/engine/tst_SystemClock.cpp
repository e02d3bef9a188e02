#include "engine/SystemClock.h"
#include "tests/support/main/Main.h"
#include "tests/support/script/ManualClock.h"

#include <QEventLoop>
#include <QTest>

#include <chrono>
#include <functional>
#include <memory>

using namespace std::chrono_literals;

/// Real time, so it waits: for as long as it takes, never for a fixed time.
class tst_SystemClock : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void runsOnceWhenTheTimeHasCome();
    void doesNotRunForADestroyedContext();
    void theClockOfTheTestsDoesTheSame();
};

void tst_SystemClock::runsOnceWhenTheTimeHasCome()
{
    SystemClock clock;
    QEventLoop loop;
    int runs = 0;
    const std::chrono::nanoseconds before = clock.now();
    clock.singleShot(20, &loop, [&] {
        ++runs;
        loop.quit();
    });
    loop.exec();
    QCOMPARE(runs, 1);
    QVERIFY2(clock.now() - before >= 19ms, qPrintable(QString::number((clock.now() - before).count())));
}

void tst_SystemClock::doesNotRunForADestroyedContext()
{
    SystemClock clock;
    QEventLoop loop;
    bool ran = false;
    auto context = std::make_unique<QObject>();
    clock.singleShot(1, context.get(), [&ran] { ran = true; });
    context.reset();
    clock.singleShot(5, &loop, [&loop] { loop.quit(); });
    loop.exec();
    QVERIFY(!ran);
}

// What comes in which order, and how much of its time each had to wait at least.
static QStringList orderOn(Clock &clock, const std::function<void(QObject &end)> &pass)
{
    QStringList order;
    QObject end;
    auto gone = std::make_unique<QObject>();
    const std::chrono::nanoseconds begin = clock.now();
    const auto note = [&](const char *name, int due) {
        order.append(
            QLatin1String(clock.now() - begin >= std::chrono::milliseconds(due - 1) ? name : "too early"));
    };
    clock.singleShot(20, &end, [&] {
        note("late", 20);
        clock.singleShot(5, &end, [&] {
            note("from a callback", 25);
            clock.singleShot(0, &end, [&] { note("at once", 25); });
            order.append(QStringLiteral("goes on before"));
        });
    });
    clock.singleShot(2, gone.get(), [&] { note("of a destroyed context", 2); });
    clock.singleShot(2, &end, [&] { note("first of two at a time", 2); });
    clock.singleShot(2, &end, [&] { note("second of two at a time", 2); });
    gone.reset();
    order.append(QStringLiteral("nothing before time passes"));
    pass(end);
    return order;
}

// Every test of the engine believes the clock that it moves itself.
void tst_SystemClock::theClockOfTheTestsDoesTheSame()
{
    SystemClock real;
    const QStringList order = orderOn(real, [&real](QObject &end) {
        QEventLoop loop;
        // Each comes after all that was due before it, on a busy machine too.
        real.singleShot(40, &end, [&] {
            real.singleShot(40, &end, [&] { real.singleShot(40, &end, [&loop] { loop.quit(); }); });
        });
        loop.exec();
    });
    ManualClock ours;
    QCOMPARE(orderOn(ours, [&ours](QObject &) { ours.advance(120); }), order);
    QCOMPARE(order.size(), 7);
    QVERIFY(!order.contains(QStringLiteral("too early")));
}

QTEST_GUILESS_MAIN(tst_SystemClock)
#include "tst_SystemClock.moc"
