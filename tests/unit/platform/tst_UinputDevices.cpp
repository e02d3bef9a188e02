#include "engine/platform/uinput/UinputDevices.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"
#include "tests/support/uinput/RecordingKernel.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <linux/input-event-codes.h>

class tst_UinputDevices : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void makesAKeyboardAndTwoPointers();
    void sendsWhatItIsTold();
    void aJumpToTheSamePlaceIsSentAgain();
    void failedCreationSaysWhyAndLeavesNothing();
    void aRefusedPressIsSentOnNewDevices();
    void aRefusedReleaseLeavesNothingHeld();
    void withoutDevicesInputIsLostAndNothingElse();
    void aLostFileTakesTheDevicesAndItsReturnBringsThem();
    void theEndLetsGo();
    void lightsAreNoticed();

private:
    QString path() const { return m_folder->filePath(QStringLiteral("uinput")); }
    void makeFile()
    {
        QFile file(path());
        QVERIFY(file.open(QIODevice::WriteOnly));
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_UinputDevices::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    makeFile();
}

void tst_UinputDevices::makesAKeyboardAndTwoPointers()
{
    RecordingKernel kernel;
    UinputDevices devices(kernel, path());
    QString problem;
    QVERIFY(devices.open(problem));
    QCOMPARE(kernel.deviceCount(), 3);
    QVERIFY(kernel.find("Veltrix keyboard") >= 0);
    QVERIFY(kernel.find("Veltrix pointer") >= 0);
    QVERIFY(kernel.find("Veltrix pointer jumps") >= 0);
}

void tst_UinputDevices::sendsWhatItIsTold()
{
    RecordingKernel kernel;
    UinputDevices devices(kernel, path());
    QString problem;
    QVERIFY(devices.open(problem));
    devices.sendKey(KEY_A, true);
    devices.sendLeftButton(true);
    devices.moveBy(1, 0);
    devices.moveBy(0, 0);
    devices.moveBy(-3, 4);
    devices.sendLeftButton(false);
    devices.sendKey(KEY_A, false);
    const QStringList wanted = {QStringLiteral("key 30 1"), QStringLiteral("key 272 1"),
                                QStringLiteral("rel 0 1"),  QStringLiteral("rel 0 -3"),
                                QStringLiteral("rel 1 4"),  QStringLiteral("key 272 0"),
                                QStringLiteral("key 30 0")};
    QCOMPARE(kernel.takeLines(), wanted);
}

void tst_UinputDevices::aJumpToTheSamePlaceIsSentAgain()
{
    RecordingKernel kernel;
    UinputDevices devices(kernel, path());
    QString problem;
    QVERIFY(devices.open(problem));
    devices.jumpTo(100, 200);
    kernel.takeLines();
    devices.jumpTo(100, 200); // the user has moved the pointer away
    QCOMPARE(kernel.takeLines().last(), QStringLiteral("abs 0 100"));
    devices.jumpTo(0, 0);
    kernel.takeLines();
    devices.jumpTo(0, 0);
    QCOMPARE(kernel.takeLines().last(), QStringLiteral("abs 0 0"));
}

void tst_UinputDevices::failedCreationSaysWhyAndLeavesNothing()
{
    RecordingKernel kernel;
    kernel.failCreation(EACCES);
    UinputDevices devices(kernel, QStringLiteral("/dev/uinput"));
    QString problem;
    QVERIFY(!devices.open(problem));
    QCOMPARE(problem, QStringLiteral("/dev/uinput: Permission denied"));
    QCOMPARE(kernel.deviceCount(), 0);
    QVERIFY(!devices.isOpen());
}

void tst_UinputDevices::aRefusedPressIsSentOnNewDevices()
{
    RecordingKernel kernel;
    UinputDevices devices(kernel, path());
    QString problem;
    QVERIFY(devices.open(problem));
    devices.sendKey(KEY_B, true);
    const int before = kernel.find("Veltrix keyboard");
    kernel.takeLines();
    LogCapture log;
    kernel.failNextWrite(ENODEV);
    devices.sendKey(KEY_A, true);
    QVERIFY(kernel.find("Veltrix keyboard") != before);
    // The old keyboard let go of what it held, and only the new press is down.
    QCOMPARE(kernel.takeLines(), QStringList({QStringLiteral("key 48 0"), QStringLiteral("key 30 1")}));
    QCOMPARE(log.takeLines(),
             QStringList{QStringLiteral("warning: the input devices are lost: No such device")});
}

void tst_UinputDevices::aRefusedReleaseLeavesNothingHeld()
{
    RecordingKernel kernel;
    UinputDevices devices(kernel, path());
    QString problem;
    QVERIFY(devices.open(problem));
    devices.sendKey(KEY_A, true);
    devices.sendLeftButton(true);
    const LogCapture log;
    kernel.failNextWrite(EIO);
    devices.sendKey(KEY_A, false);
    QVERIFY(kernel.held().isEmpty());
    QVERIFY(devices.isOpen());
}

void tst_UinputDevices::withoutDevicesInputIsLostAndNothingElse()
{
    RecordingKernel kernel;
    UinputDevices devices(kernel, path());
    QString problem;
    QVERIFY(devices.open(problem));
    LogCapture log;
    kernel.failCreation(EACCES);
    kernel.failNextWrite(ENODEV);
    devices.sendKey(KEY_A, true);
    devices.sendKey(KEY_A, false);
    devices.sendLeftButton(true);
    devices.moveBy(1, 1);
    devices.jumpTo(1, 1);
    QVERIFY(!devices.isOpen());
    QCOMPARE(kernel.takeLines(), QStringList());
    QCOMPARE(log.takeLines().size(), 2); // lost, and not to be made again: once
}

void tst_UinputDevices::aLostFileTakesTheDevicesAndItsReturnBringsThem()
{
    RecordingKernel kernel;
    UinputDevices devices(kernel, path());
    QString problem;
    QVERIFY(devices.open(problem));
    devices.sendKey(KEY_A, true);
    const LogCapture log;
    for (int times = 0; times < 2; ++times) {
        QVERIFY(QFile::remove(path()));
        QTRY_VERIFY(!devices.isOpen());
        QVERIFY(kernel.held().isEmpty());
        QCOMPARE(kernel.deviceCount(), 0);
        makeFile();
        QTRY_VERIFY(devices.isOpen());
        kernel.takeLines();
        devices.sendKey(KEY_A, true);
        QCOMPARE(kernel.takeLines(), QStringList{QStringLiteral("key 30 1")});
    }
}

void tst_UinputDevices::theEndLetsGo()
{
    RecordingKernel kernel;
    {
        UinputDevices devices(kernel, path());
        QString problem;
        QVERIFY(devices.open(problem));
        devices.sendKey(KEY_A, true);
    }
    QVERIFY(kernel.held().isEmpty());
    QCOMPARE(kernel.deviceCount(), 0);
}

void tst_UinputDevices::lightsAreNoticed()
{
    RecordingKernel kernel;
    UinputDevices devices(kernel, path());
    QString problem;
    QVERIFY(devices.open(problem));
    QSignalSpy changes(&devices, &UinputDevices::numLockChanged);
    const int keyboard = kernel.find("Veltrix keyboard");
    QVERIFY(!devices.isNumLockOn());
    kernel.writeFromDesktop(keyboard, {EV_LED, LED_CAPSL, 1});
    kernel.writeFromDesktop(keyboard, {EV_LED, LED_NUML, 1});
    kernel.writeFromDesktop(keyboard, {EV_SYN, SYN_REPORT, 0});
    QVERIFY(changes.wait());
    QVERIFY(devices.isNumLockOn());
    kernel.writeFromDesktop(keyboard, {EV_LED, LED_NUML, 0});
    QVERIFY(changes.wait());
    QVERIFY(!devices.isNumLockOn());
    QCOMPARE(changes.size(), 2);
}

QTEST_GUILESS_MAIN(tst_UinputDevices)

#include "tst_UinputDevices.moc"
