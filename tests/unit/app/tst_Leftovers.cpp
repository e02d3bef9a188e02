#include "app/Leftovers.h"
#include "tests/support/main/Main.h"

#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLockFile>
#include <QTemporaryDir>
#include <QTest>

class tst_Leftovers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void killedWriteOfTheSettingsGoes();
    void withoutADeadLockNothingGoes();
    void anEmptyLockGoes();
    void aLockThatIsHeldOrNamesAProcessStays();
    void aYoungEmptyLockStays();
    void aYoungEmptyLockHoldsNoStartUp();

private:
    // Made a while ago, as far as the file says.
    static void write(const QString &path, const QByteArray &content, int secondsAgo = 5)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.flush();
        QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(-secondsAgo),
                                 QFileDevice::FileModificationTime));
    }
};

// A number that no process has: beyond the largest that the system gives.
void tst_Leftovers::killedWriteOfTheSettingsGoes()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("Veltrix.conf"));
    write(path + QStringLiteral(".AaBbCc"), "[x]", 60); // before the write that was killed
    write(path + QStringLiteral(".lock"),
          QByteArray("4194999\nveltrix\n") + QSysInfo::machineHostName().toUtf8() + "\n");
    QStringList stay{QStringLiteral("Veltrix.conf"),         QStringLiteral("Veltrix.conf.AaBbCc"),
                     QStringLiteral("Veltrix.conf.Backup"),  QStringLiteral("Veltrix.conf.backup"),
                     QStringLiteral("Veltrix.conf.backup1"), QStringLiteral("Other.conf.AbCdEf")};
    for (const QString &name : stay + QStringList{QStringLiteral("Veltrix.conf.AbCdEf")}) {
        if (!QFile::exists(folder.filePath(name))) {
            write(folder.filePath(name), "[x]");
        }
    }
    Leftovers::clearBesideSettings(path);
    QStringList left = QDir(folder.path()).entryList(QDir::Files);
    left.sort();
    stay.sort();
    QCOMPARE(left, stay);
}

void tst_Leftovers::withoutADeadLockNothingGoes()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("Veltrix.conf"));
    write(path + QStringLiteral(".AbCdEf"), "[x]");
    Leftovers::clearBesideSettings(path);
    QVERIFY(QFile::exists(path + QStringLiteral(".AbCdEf")));
    QLockFile lock(path + QStringLiteral(".lock"));
    QVERIFY(lock.tryLock());
    write(path + QStringLiteral(".GhIjKl"), "[x]", 0);
    Leftovers::clearBesideSettings(path);
    QVERIFY(QFile::exists(path + QStringLiteral(".GhIjKl")));
    QVERIFY(QFile::exists(path + QStringLiteral(".lock")));
}

void tst_Leftovers::anEmptyLockGoes()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("settings.conf"));
    write(path + QStringLiteral(".lock"), QByteArray());
    Leftovers::clearBesideSettings(path);
    QVERIFY(!QFile::exists(path + QStringLiteral(".lock")));
}

void tst_Leftovers::aLockThatIsHeldOrNamesAProcessStays()
{
    const QTemporaryDir folder;
    const QString held = folder.filePath(QStringLiteral("held"));
    QLockFile lock(held);
    QVERIFY(lock.tryLock());
    const QString named = folder.filePath(QStringLiteral("named"));
    write(named, "1\ninit\nhost\n");
    Leftovers::clearLock(held);
    Leftovers::clearLock(named);
    QVERIFY(QFile::exists(held));
    QVERIFY(QFile::exists(named));
}

void tst_Leftovers::aYoungEmptyLockStays()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("young"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    Leftovers::clearLock(path);
    QVERIFY(QFile::exists(path));
}

void tst_Leftovers::aYoungEmptyLockHoldsNoStartUp()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("settings.conf"));
    QFile lock(path + QStringLiteral(".lock"));
    QVERIFY(lock.open(QIODevice::WriteOnly));
    QElapsedTimer time;
    time.start();
    Leftovers::clearBesideSettings(path);
    QVERIFY(!lock.exists());
    QVERIFY2(time.elapsed() < 1500, qPrintable(QString::number(time.elapsed())));
}

QTEST_GUILESS_MAIN(tst_Leftovers)
#include "tst_Leftovers.moc"
