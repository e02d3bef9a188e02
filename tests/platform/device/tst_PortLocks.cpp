#include "device/PortLocks.h"
#include "tests/support/main/Main.h"

#include <QCoreApplication>
#include <QFile>
#include <QLockFile>
#include <QSysInfo>
#include <QTest>

#include <sys/stat.h>

/// In the folder that the serial port library uses, under names that no port has.
class tst_PortLocks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theLockOfAnEndedProcessGoes()
    {
        const QString lock = write(ended, QSysInfo::machineHostName());
        QVERIFY(PortLocks::areLeftOf(ended));
        PortLocks::removeOf(ended);
        QVERIFY(!QFile::exists(lock));
        QVERIFY(!PortLocks::areLeftOf(ended));
    }

    void othersStay()
    {
        const QString other = write(ended + 1, QSysInfo::machineHostName());
        const QString elsewhere = write(ended, QStringLiteral("another-machine"));
        PortLocks::removeOf(ended);
        QVERIFY(QFile::remove(other));
        QVERIFY(QFile::remove(elsewhere));
    }

    void oneThatAProcessHoldsMeanwhileStays()
    {
        const QString path = nextPath();
        QLockFile lock(path);
        QVERIFY(lock.tryLock());
        PortLocks::removeOf(QCoreApplication::applicationPid());
        QVERIFY(QFile::exists(path));
    }

    // In folders that users share, any of them could put such things there.
    void whatIsNoFileIsNotRead_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::newRow("pipe") << QStringLiteral("pipe");
        QTest::newRow("link to a pipe") << QStringLiteral("link");
        QTest::newRow("endless") << QStringLiteral("endless");
    }

    void whatIsNoFileIsNotRead()
    {
        QFETCH(QString, kind);
        const QString path = nextPath();
        const QString pipe = path + QStringLiteral(".pipe");
        if (kind == QLatin1String("endless")) {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(qint64{1} << 40));
        } else {
            const bool isLink = kind == QLatin1String("link");
            QCOMPARE(::mkfifo(QFile::encodeName(isLink ? pipe : path).constData(), 0600), 0);
            QVERIFY(!isLink || QFile::link(pipe, path));
        }
        const QString port = QStringLiteral("/dev/") + QFileInfo(path).fileName().mid(int(qstrlen("LCK..")));
        QCOMPARE(PortLocks::trapFor(port), path);
        QCOMPARE(PortLocks::holderOf(port), qint64(0));
        PortLocks::removeOf(ended);
        QVERIFY(QFile::remove(path));
        QFile::remove(pipe);
        QCOMPARE(PortLocks::trapFor(port), QString());
    }

private:
    static constexpr qint64 ended = 4194305; // no process can have this number

    static QString nextPath()
    {
        static int number = 0;
        return QStringLiteral("/tmp/LCK..tst_PortLocks-%1-%2")
            .arg(QCoreApplication::applicationPid())
            .arg(++number);
    }

    static QString write(qint64 process, const QString &host)
    {
        const QString path = nextPath();
        QFile file(path);
        if (file.open(QIODevice::WriteOnly)) {
            file.write(QStringLiteral("%1\nveltrix\n%2\n").arg(process).arg(host).toLatin1());
        }
        return path;
    }
};

QTEST_GUILESS_MAIN(tst_PortLocks)
#include "tst_PortLocks.moc"
