#include "app/Leftovers.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QTemporaryDir>
#include <QtTest>

class tst_Leftovers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void filesThatWereToTakeThePlaceGo();
    void anEmptyLockGoes();
    void aLockThatIsHeldOrNamesAProcessStays();
    void aYoungEmptyLockStays();

private:
    // Made a while ago, as far as the file says.
    static void write(const QString &path, const QByteArray &content)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.flush();
        QVERIFY(
            file.setFileTime(QDateTime::currentDateTime().addSecs(-5), QFileDevice::FileModificationTime));
    }
};

void tst_Leftovers::filesThatWereToTakeThePlaceGo()
{
    const QTemporaryDir folder;
    const QStringList stay{QStringLiteral("custom.xml"), QStringLiteral("custom.xml.backup1"),
                           QStringLiteral("custom.xml.old"), QStringLiteral("other.xml.AbCdEf")};
    for (const QString &name : stay + QStringList{QStringLiteral("custom.xml.AbCdEf")}) {
        write(folder.filePath(name), "x");
    }
    Leftovers::clearBeside(folder.filePath(QStringLiteral("custom.xml")));
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files, QDir::Name), stay);
}

void tst_Leftovers::anEmptyLockGoes()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("settings.conf"));
    write(path + QStringLiteral(".lock"), QByteArray());
    Leftovers::clearBeside(path);
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

QTEST_GUILESS_MAIN(tst_Leftovers)
#include "tst_Leftovers.moc"
