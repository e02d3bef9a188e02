#include "engine/SystemClock.h"

#include <QEventLoop>
#include <QtTest>

#include <memory>

/// Real time, so it waits: for as long as it takes, never for a fixed time.
class tst_SystemClock : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void runsOnceWhenTheTimeHasCome();
    void doesNotRunForADestroyedContext();
};

void tst_SystemClock::runsOnceWhenTheTimeHasCome()
{
    SystemClock clock;
    QEventLoop loop;
    int runs = 0;
    const qint64 before = clock.now();
    clock.singleShot(20, &loop, [&] {
        ++runs;
        loop.quit();
    });
    loop.exec();
    QCOMPARE(runs, 1);
    QVERIFY2(clock.now() - before >= 19, qPrintable(QString::number(clock.now() - before)));
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

QTEST_GUILESS_MAIN(tst_SystemClock)
#include "tst_SystemClock.moc"
