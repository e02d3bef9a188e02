#include "engine/platform/x11/OSXMouseListener.h"
#include "engine/platform/x11/X11Pointer.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"
#include "tests/support/xserver/XServer.h"
#include "tests/support/xserver/XTestDevices.h"

#include <QElapsedTimer>
#include <QMetaMethod>
#include <QSignalSpy>
#include <QTest>

class tst_OSXMouseListener : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void signalsStandInOrder();
    void userMovementIsReported();
    void ownMovementsAndSynthesisedOnesAreNot();
    void synthesisedMovementOfANewSeatIsNot();
    void movementIsSeenDuringAnotherProgramsGrab();
    void fastMouseIsReportedAHundredTimesASecondAtMost();
    void theLastMovementIsReported();
    void restAfterAMovementIsSilent();
    void workSaysHowItGoes();
    void serverThatDiesEndsTheWork();
};

void tst_OSXMouseListener::signalsStandInOrder()
{
    QStringList names;
    const QMetaObject &meta = OSXMouseListener::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        names << QString::fromLatin1(meta.method(i).methodSignature());
    }
    QCOMPARE(names, (QStringList{QStringLiteral("workRequested()"), QStringLiteral("valueChanged(QString)"),
                                 QStringLiteral("finished()"), QStringLiteral("userMovedMouse()"),
                                 QStringLiteral("doWork()")}));
}

void tst_OSXMouseListener::userMovementIsReported()
{
    const XServer server;
    server.exportDisplay();
    XTestDevices devices(server.display());
    OSXMouseListener listener;
    QSignalSpy moved(&listener, &OSXMouseListener::userMovedMouse);
    listener.doWork();
    devices.moveMouseBy(3, 0);
    QTRY_COMPARE(moved.count(), 1);
    QTest::qWait(250);
    devices.moveMouseBy(0, 3);
    QTRY_COMPARE(moved.count(), 2);
}

void tst_OSXMouseListener::ownMovementsAndSynthesisedOnesAreNot()
{
    const XServer server;
    server.exportDisplay();
    XTestDevices devices(server.display());
    OSXMouseListener listener;
    QSignalSpy moved(&listener, &OSXMouseListener::userMovedMouse);
    listener.doWork();
    QString problem;
    X11Pointer pointer(X11Connection::open(problem));
    for (int i = 0; i < 20; ++i) {
        pointer.moveTo(QPoint(100 + i, 100));
        QCOMPARE(pointer.position(), QPoint(100 + i, 100));
        devices.moveXTestPointerTo(200 + i, 200);
    }
    QCOMPARE(pointer.position(), QPoint(219, 200));
    QTest::qWait(100);
    QCOMPARE(moved.count(), 0);
    devices.moveMouseBy(1, 1);
    QTRY_COMPARE(moved.count(), 1);
}

void tst_OSXMouseListener::synthesisedMovementOfANewSeatIsNot()
{
    const XServer server;
    server.exportDisplay();
    XTestDevices devices(server.display());
    OSXMouseListener listener;
    QSignalSpy moved(&listener, &OSXMouseListener::userMovedMouse);
    listener.doWork();
    devices.addMaster("second");
    QTest::qWait(50);
    devices.moveDeviceBy("second XTEST pointer", 5, 5);
    QTest::qWait(100);
    QCOMPARE(moved.count(), 0);
}

void tst_OSXMouseListener::movementIsSeenDuringAnotherProgramsGrab()
{
    const XServer server;
    server.exportDisplay();
    XTestDevices devices(server.display());
    XTestDevices other(server.display());
    OSXMouseListener listener;
    QSignalSpy moved(&listener, &OSXMouseListener::userMovedMouse);
    listener.doWork();
    QVERIFY(other.grabPointer());
    devices.moveMouseBy(3, 0);
    QTRY_COMPARE(moved.count(), 1);
}

void tst_OSXMouseListener::fastMouseIsReportedAHundredTimesASecondAtMost()
{
    const XServer server;
    server.exportDisplay();
    XTestDevices devices(server.display());
    OSXMouseListener listener;
    QVector<qint64> times;
    QElapsedTimer clock;
    clock.start();
    connect(&listener, &OSXMouseListener::userMovedMouse, this, [&] { times << clock.elapsed(); });
    listener.doWork();
    while (clock.elapsed() < 1500) {
        devices.moveMouseBy(clock.elapsed() % 2 ? 1 : -1, 0);
        QTest::qWait(2);
    }
    QVERIFY2(times.size() >= 30 && times.size() <= 150, qPrintable(QString::number(times.size())));
    QVERIFY(times.first() < 100);
    for (int i = 1; i < times.size(); ++i) {
        QVERIFY2(times[i] - times[i - 1] >= 9 && times[i] - times[i - 1] < 150,
                 qPrintable(QString::number(times[i] - times[i - 1])));
    }
}

void tst_OSXMouseListener::theLastMovementIsReported()
{
    const XServer server;
    server.exportDisplay();
    XTestDevices devices(server.display());
    OSXMouseListener listener;
    QSignalSpy moved(&listener, &OSXMouseListener::userMovedMouse);
    listener.doWork();
    for (int round = 0; round < 5; ++round) {
        devices.moveMouseBy(1, 0);
        QTRY_COMPARE(moved.count(), 1);
        QTest::qWait(20);
        devices.moveMouseBy(1, 0);
        QTRY_COMPARE(moved.count(), 2);
        QTest::qWait(20);
        moved.clear();
    }
}

void tst_OSXMouseListener::restAfterAMovementIsSilent()
{
    const XServer server;
    server.exportDisplay();
    XTestDevices devices(server.display());
    OSXMouseListener listener;
    QSignalSpy moved(&listener, &OSXMouseListener::userMovedMouse);
    listener.doWork();
    for (int i = 0; i < 10; ++i) {
        devices.moveMouseBy(1, 0);
    }
    QTRY_COMPARE(moved.count(), 1);
    QTest::qWait(500);
    QCOMPARE(moved.count(), 1);
}

void tst_OSXMouseListener::workSaysHowItGoes()
{
    const XServer server;
    server.exportDisplay();
    OSXMouseListener listener;
    QStringList told;
    connect(&listener, &OSXMouseListener::workRequested, this, [&] { told << QStringLiteral("requested"); });
    connect(&listener, &OSXMouseListener::valueChanged, this, [&](const QString &value) { told << value; });
    connect(&listener, &OSXMouseListener::finished, this, [&] { told << QStringLiteral("finished"); });
    listener.doWork();
    listener.doWork();
    QCOMPARE(told, (QStringList{QStringLiteral("requested"), QStringLiteral("watching")}));
    QVERIFY(listener.isWatching());

    told.clear();
    LogCapture log;
    qunsetenv("DISPLAY");
    OSXMouseListener blind;
    connect(&blind, &OSXMouseListener::workRequested, this, [&] { told << QStringLiteral("requested"); });
    connect(&blind, &OSXMouseListener::valueChanged, this, [&](const QString &value) { told << value; });
    connect(&blind, &OSXMouseListener::finished, this, [&] { told << QStringLiteral("finished"); });
    blind.doWork();
    QCOMPARE(told,
             (QStringList{QStringLiteral("requested"), QStringLiteral("not watching: DISPLAY is not set"),
                          QStringLiteral("finished")}));
    QCOMPARE(log.takeLines().size(), 1);
}

void tst_OSXMouseListener::serverThatDiesEndsTheWork()
{
    XServer server;
    server.exportDisplay();
    OSXMouseListener listener;
    QSignalSpy finished(&listener, &OSXMouseListener::finished);
    listener.doWork();
    LogCapture log;
    server.stop();
    QTRY_COMPARE(finished.count(), 1);
    QVERIFY(!listener.isWatching());
    QCOMPARE(log.takeLines().size(), 2); // the connection, and what that means
    QTest::qWait(50);
    QCOMPARE(finished.count(), 1);
}

QTEST_GUILESS_MAIN(tst_OSXMouseListener)

#include "tst_OSXMouseListener.moc"
