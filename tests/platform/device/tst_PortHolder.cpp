#include "device/DeviceSearch.h"
#include "device/PortHolder.h"
#include "device/PortLocks.h"
#include "device/QtSerialPort.h"
#include "tests/platform/device/Pty.h"
#include "tests/support/main/Main.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QTest>

/// A real port, held by a real program.
class tst_PortHolder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aProgramThatHasThePortOpenIsNamed()
    {
        const Pty pty;
        QVERIFY(pty.isValid());
        QProcess holder;
        holder.setStandardInputFile(pty.slave());
        start(holder);
        const PortHolder found = PortHolder::of(pty.slave());
        QCOMPARE(found.process, holder.processId());
        QCOMPARE(found.program, QStringLiteral("sleep"));
        QVERIFY(found.isThere());
        end(holder);
        QVERIFY(!found.isThere());
        QCOMPARE(PortHolder::of(pty.slave()).process, qint64(0));
    }

    void aProgramThatHasLockedThePortIsNamed()
    {
        QProcess holder;
        start(holder);
        const QString name = QStringLiteral("tst_PortHolder%1").arg(QCoreApplication::applicationPid());
        QFile lock(QStringLiteral("/tmp/LCK..") + name);
        QVERIFY(lock.open(QIODevice::WriteOnly));
        lock.write(QStringLiteral("%1\nsleep\n%2\n")
                       .arg(holder.processId())
                       .arg(QSysInfo::machineHostName())
                       .toLatin1());
        lock.close();
        const QString port = QStringLiteral("/dev/") + name;
        QCOMPARE(PortHolder::of(port).program, QStringLiteral("sleep"));
        end(holder);
        // What a killed program has left names nobody.
        const qint64 left = PortHolder::of(port).process;
        QVERIFY(lock.remove());
        QCOMPARE(left, qint64(0));
    }

    void aPortThatIsLockedIsFoundHeld()
    {
        const Pty pty;
        QtSerialPort first;
        const PortDescription port{QStringLiteral("p"), pty.slave(), QString(), 0};
        first.setPort(port);
        QVERIFY(first.open(QIODevice::ReadWrite));

        QtSerialPort second;
        SerialPort::Error error = SerialPort::Error::None;
        connect(&second, &SerialPort::errorOccurred, this,
                [&error](SerialPort::Error each) { error = each; });
        second.setPort(port);
        QVERIFY(!second.open(QIODevice::ReadWrite));
        const DeviceFinding finding = DeviceSearch::refused(port, error, second.errorString());
        QCOMPARE(finding.kind, DeviceFinding::Kind::Held);
        QCOMPARE(finding.port, pty.slave());
    }

    // The search runs on the event loop, beside a knob that may be turned a moment later.
    void theSearchIsBounded()
    {
        const Pty pty;
        QElapsedTimer timer;
        timer.start();
        PortHolder::of(pty.slave());
        QVERIFY2(timer.elapsed() < 100, qPrintable(QString::number(timer.elapsed())));
    }

private:
    static void start(QProcess &holder)
    {
        holder.start(QStringLiteral("sleep"), {QStringLiteral("60")});
        QVERIFY(holder.waitForStarted());
        // Its name is the test's until it has become the other program.
        QTRY_VERIFY(QFileInfo(QStringLiteral("/proc/%1/exe").arg(holder.processId()))
                        .symLinkTarget()
                        .contains(QLatin1String("/bin/")));
    }
    static void end(QProcess &holder)
    {
        holder.kill();
        QVERIFY(holder.waitForFinished());
    }
};

QTEST_GUILESS_MAIN(tst_PortHolder)
#include "tst_PortHolder.moc"
