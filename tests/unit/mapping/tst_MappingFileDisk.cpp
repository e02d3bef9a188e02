#include "FileInFolder.h"
#include "mapping/FileHistory.h"
#include "mapping/MappingSession.h"
#include "tests/support/disk/FullDisk.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"

#include <QFileInfo>
#include <QTest>

#include <cerrno>
#include <sys/syscall.h>
#include <sys/wait.h>

namespace
{

int syncError = 0; // what the disk answers when it is to be synchronized, as an error number
bool endsInSync = false;

} // namespace

// In the system's place, for the program under test too.
extern "C" int fsync(int fileDescriptor)
{
    if (endsInSync) {
        _exit(0);
    }
    if (syncError != 0) {
        errno = syncError;
        return -1;
    }
    return static_cast<int>(syscall(SYS_fsync, fileDescriptor));
}

namespace
{

ino_t inodeOf(const QString &path)
{
    struct stat status {
    };
    if (stat(QFile::encodeName(path).constData(), &status) != 0) {
        qFatal("%s cannot be examined", qPrintable(path));
    }
    return status.st_ino;
}

} // namespace

/// What is left of the files when the disk is full or fails or the program is killed, and what their earlier
/// versions cost on it.
class tst_MappingFileDisk : public QObject, private FileInFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }

    void aFullDiskLeavesTheOldFile_data();
    void aFullDiskLeavesTheOldFile();
    void aDiskThatFailsLeavesTheOldFile();
    void aDiskThatKnowsNoSuchThingIsNoFailure();
    void whatAKilledWriteLeavesIsRemoved_data();
    void whatAKilledWriteLeavesIsRemoved();
    void usersFilesAreNoLeftovers();
    void anEarlierVersionCostsNoCopy();
    void onAnotherDiskAnEarlierVersionIsACopy();
    void aLinkedFilesEarlierVersionIsNoLink();
    void aStepThatCannotBeTakenBackLeavesAllAsItIs();
};

void tst_MappingFileDisk::aFullDiskLeavesTheOldFile_data()
{
    QTest::addColumn<int>("limit");
    QTest::addColumn<int>("size");
    QTest::newRow("nothing fits, small document") << 0 << 100;
    QTest::newRow("a part fits, small document") << 50 << 100;
    QTest::newRow("a part fits, large document") << 100000 << 1000000;
    QTest::newRow("all but one byte") << 999999 << 1000000;
}

void tst_MappingFileDisk::aFullDiskLeavesTheOldFile()
{
    QFETCH(int, limit);
    QFETCH(int, size);
    writeFile(path(), "old");
    bool replaced = true;
    {
        const FullDisk full(static_cast<rlim_t>(limit));
        replaced = replace(path(), QByteArray(size, 'n'));
    }
    QVERIFY(!replaced);
    QVERIFY(!m_reason.isEmpty());
    QCOMPARE(contentOf(path()), QByteArray("old"));
    QCOMPARE(names(), QStringList(QStringLiteral("file.xml"))); // nothing half-written stays behind
}

void tst_MappingFileDisk::aDiskThatFailsLeavesTheOldFile()
{
    writeFile(path(), "old");
    syncError = EIO;
    const bool replaced = replace(path(), "new");
    syncError = 0;
    QVERIFY(!replaced);
    QCOMPARE(m_reason, QStringLiteral("Input/output error"));
    QCOMPARE(contentOf(path()), QByteArray("old"));
    QCOMPARE(names(), QStringList(QStringLiteral("file.xml")));
}

void tst_MappingFileDisk::aDiskThatKnowsNoSuchThingIsNoFailure()
{
    syncError = EINVAL;
    const bool replaced = replace(path(), "new");
    syncError = 0;
    QVERIFY(replaced);
    QCOMPARE(contentOf(path()), QByteArray("new"));
}

void tst_MappingFileDisk::whatAKilledWriteLeavesIsRemoved_data()
{
    QTest::addColumn<QString>("written");
    for (const char *name : {"custom.xml", "custom.xml.broken", "custom.xml.kept"}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

void tst_MappingFileDisk::whatAKilledWriteLeavesIsRemoved()
{
    QFETCH(QString, written);
    writeFile(path("custom.xml"), "old");
    const QStringList before = names();
    const pid_t process = fork();
    if (process == 0) {
        endsInSync = true;
        replace(path(written.toLatin1()), "new");
        _exit(1);
    }
    int status = -1;
    QCOMPARE(waitpid(process, &status, 0), process);
    QCOMPARE(status, 0);
    QCOMPARE(names().size(), before.size() + 1);
    makeLink(QStringLiteral("custom.xml"), path("zlink.xml"));
    MappingFile::removeUnfinished(path("zlink.xml")); // beside the file, not beside the link
    QCOMPARE(names(), before + QStringList(QStringLiteral("zlink.xml")));
}

void tst_MappingFileDisk::usersFilesAreNoLeftovers()
{
    for (const char *name :
         {"custom.xml", "custom.xml.BackUp", "custom.xml.backup", "custom.xml.broken", "custom.xml.veltrix",
          "custom.xml.veltrix-backup", "other.xml.AbCdEf", "other.xml.veltrix-0123456789abcdef"}) {
        writeFile(path(name), "mine");
    }
    const QStringList before = names();
    MappingFile::removeUnfinished(path("custom.xml"));
    QCOMPARE(names(), before);
}

void tst_MappingFileDisk::anEarlierVersionCostsNoCopy()
{
    writeFile(path("custom.xml"), "old");
    const ino_t before = inodeOf(path("custom.xml"));
    syncError = EIO; // nothing is written
    QVERIFY(FileHistory::note(path("custom.xml")));
    syncError = 0;
    const QString version = FileHistory::versions(path("custom.xml")).constFirst().path;
    QCOMPARE(inodeOf(version), before);
    QVERIFY(MappingFile::replace(path("custom.xml"), "new"));
    QCOMPARE(contentOf(version), QByteArray("old"));
}

void tst_MappingFileDisk::onAnotherDiskAnEarlierVersionIsACopy()
{
    const QTemporaryDir elsewhere(QStringLiteral("/dev/shm/history-XXXXXX"));
    QVERIFY(elsewhere.isValid());
    makeLink(elsewhere.path(), path("history"));
    writeFile(path("custom.xml"), "old");
    QVERIFY(FileHistory::note(path("custom.xml")));
    const QString version = FileHistory::versions(path("custom.xml")).constFirst().path;
    QVERIFY(inodeOf(version) != inodeOf(path("custom.xml")));
    QCOMPARE(contentOf(version), QByteArray("old"));

    writeFile(path("current.xml"), "old");
    syncError = EIO;
    const LogCapture log;
    QVERIFY(!FileHistory::note(path("current.xml"))); // whole on the disk, or not at all
    syncError = 0;
    QVERIFY(FileHistory::versions(path("current.xml")).isEmpty());
}

void tst_MappingFileDisk::aLinkedFilesEarlierVersionIsNoLink()
{
    QVERIFY(QDir().mkdir(path("elsewhere")));
    writeFile(path("elsewhere/mine.xml"), "old");
    makeLink(path("elsewhere/mine.xml"), path("custom.xml"));
    QVERIFY(FileHistory::note(path("custom.xml")));
    QVERIFY(MappingFile::replace(path("custom.xml"), "new"));
    const QString version = FileHistory::versions(path("custom.xml")).constFirst().path;
    QVERIFY(!QFileInfo(version).isSymbolicLink());
    QCOMPARE(contentOf(version), QByteArray("old"));
}

void tst_MappingFileDisk::aStepThatCannotBeTakenBackLeavesAllAsItIs()
{
    const QByteArray mine = "<ZR>\n<MAPPING software='One'/> </ZR>";
    writeFile(path("custom.xml"), mine);
    MappingSession session(m_directory->path());
    session.load([] {}, [] { return ActionTable(); });
    QVERIFY(session.remove(QStringLiteral("One")));
    const QByteArray without = contentOf(path("custom.xml"));
    syncError = EIO;
    for (int times = 0; times < 2; ++times) {
        const FileResult result = session.takeBack();
        QVERIFY(!result);
        QCOMPARE(result.reason(), QStringLiteral("Input/output error"));
        QCOMPARE(contentOf(path("custom.xml")), without);
        QVERIFY(session.custom().isEmpty());
        QVERIFY(session.canTakeBack() && !session.canRedo());
    }
    syncError = 0;
    QVERIFY(session.takeBack());
    QCOMPARE(contentOf(path("custom.xml")), mine);
    QCOMPARE(session.custom().size(), 1);
}

QTEST_GUILESS_MAIN(tst_MappingFileDisk)
#include "tst_MappingFileDisk.moc"
