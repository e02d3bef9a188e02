#include "MappingFixtures.h"
#include "mapping/FileHistory.h"
#include "mapping/MappingFile.h"
#include "mapping/MappingSession.h"
#include "tests/support/disk/FullDisk.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

#include <array>
#include <cerrno>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

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

// Permissions do not bind the superuser: the tests of them run as somebody else then.
class Unprivileged
{
    Q_DISABLE_COPY_MOVE(Unprivileged)

public:
    Unprivileged()
    {
        constexpr uid_t nobody = 65534;
        // The real one too, which access() asks for; the saved one leads back.
        if (m_superuser && setresuid(nobody, nobody, 0) != 0) {
            qFatal("the user cannot be changed");
        }
    }
    ~Unprivileged()
    {
        if (m_superuser && setresuid(0, 0, 0) != 0) {
            qFatal("the user cannot be changed back");
        }
    }

private:
    const bool m_superuser = geteuid() == 0;
};

unsigned modeOf(const QString &path)
{
    struct stat status {
    };
    if (stat(QFile::encodeName(path).constData(), &status) != 0) {
        qFatal("%s cannot be examined", qPrintable(path));
    }
    return status.st_mode & 07777U;
}

ino_t inodeOf(const QString &path)
{
    struct stat status {
    };
    if (stat(QFile::encodeName(path).constData(), &status) != 0) {
        qFatal("%s cannot be examined", qPrintable(path));
    }
    return status.st_ino;
}

void setMode(const QString &path, mode_t mode)
{
    if (chmod(QFile::encodeName(path).constData(), mode) != 0) {
        qFatal("%s keeps its mode", qPrintable(path));
    }
}

void makeLink(const QString &target, const QString &link)
{
    if (symlink(QFile::encodeName(target).constData(), QFile::encodeName(link).constData()) != 0) {
        qFatal("%s cannot be linked", qPrintable(link));
    }
}

QString targetOf(const QString &link)
{
    std::array<char, 4096> target{};
    const ssize_t length = readlink(QFile::encodeName(link).constData(), target.data(), target.size());
    return length < 0 ? QString() : QFile::decodeName(QByteArray(target.data(), static_cast<int>(length)));
}

} // namespace

class tst_MappingFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void aFileIsReadWhole();
    void aMissingFileIsNoFailure();
    void whatIsNoRegularFileIsRefused_data();
    void whatIsNoRegularFileIsRefused();
    void anUnreadableFileIsRefused();
    void aFileAboveTheLimitIsRefused();
    void aFileAtTheLimitIsRead();

    void aMissingFileIsCreated();
    void anExistingFileIsReplacedNotOverwritten();
    void permissionsAreKept_data();
    void permissionsAreKept();
    void aSymbolicLinkStaysAndItsTargetIsReplaced_data();
    void aSymbolicLinkStaysAndItsTargetIsReplaced();
    void linksToLinksAllStay();
    void aDanglingLinkGetsItsTarget();
    void linksInACircleFail();
    void asManyLinksAreFollowedAsTheSystemFollows();
    void aFullDiskLeavesTheOldFile_data();
    void aFullDiskLeavesTheOldFile();
    void aDiskThatFailsLeavesTheOldFile();
    void aDiskThatKnowsNoSuchThingIsNoFailure();
    void aFileIsMadeWritableForItsOwner();
    void aDirectoryThatCannotBeWrittenLeavesTheOldFile();
    void aFileThatMustNotBeWrittenIsNotReplaced();
    void aDirectoryIsNotReplaced();
    void moreThanTheLimitIsNotWritten();
    void asMuchAsTheLimitIsWritten();
    void whatAKilledWriteLeavesIsRemoved_data();
    void whatAKilledWriteLeavesIsRemoved();
    void usersFilesAreNoLeftovers();
    void anEarlierVersionCostsNoCopy();
    void onAnotherDiskAnEarlierVersionIsACopy();
    void aLinkedFilesEarlierVersionIsNoLink();
    void aStepThatCannotBeTakenBackLeavesAllAsItIs();

private:
    QString path(const char *name = "file.xml") const { return m_directory->filePath(QLatin1String(name)); }
    QStringList names() const
    {
        return QDir(m_directory->path())
            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System);
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    bool replace(const QString &path, const QByteArray &bytes)
    {
        const FileResult result = MappingFile::replace(path, bytes);
        m_reason = result.reason();
        return bool(result);
    }

    QString m_reason;
};

void tst_MappingFile::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    setMode(m_directory->path(), 0777);
    m_reason.clear();
}

void tst_MappingFile::aFileIsReadWhole()
{
    const QByteArray content("\0\n\r\n\xFF", 5);
    writeFile(path(), content);
    const MappingFile::ReadResult result = MappingFile::read(path());
    QVERIFY(result.status == MappingFile::Status::Read);
    QCOMPARE(result.bytes, content);
    QVERIFY(result.reason.isEmpty());
}

void tst_MappingFile::aMissingFileIsNoFailure()
{
    QVERIFY(MappingFile::read(path()).status == MappingFile::Status::Missing);
    QVERIFY(MappingFile::read(path("no/such/folder")).status == MappingFile::Status::Missing);
    makeLink(QStringLiteral("nowhere"), path("link"));
    QVERIFY(MappingFile::read(path("link")).status == MappingFile::Status::Missing);
}

void tst_MappingFile::whatIsNoRegularFileIsRefused_data()
{
    QTest::addColumn<QString>("kind");
    for (const char *kind : {"directory", "pipe", "link to a pipe", "/dev/zero", "/dev/null"}) {
        QTest::newRow(kind) << QString::fromLatin1(kind);
    }
}

void tst_MappingFile::whatIsNoRegularFileIsRefused()
{
    QFETCH(QString, kind);
    QString target = path();
    if (kind == QLatin1String("directory")) {
        QVERIFY(QDir().mkdir(target));
    } else if (kind.startsWith(QLatin1String("/dev/"))) {
        target = kind;
    } else {
        QCOMPARE(mkfifo(QFile::encodeName(path("pipe")).constData(), 0666), 0);
        target = path("pipe");
        if (kind.startsWith(QLatin1String("link"))) {
            makeLink(QStringLiteral("pipe"), path());
            target = path();
        }
    }
    const MappingFile::ReadResult result = MappingFile::read(target);
    QVERIFY(result.status == MappingFile::Status::Refused);
    QCOMPARE(result.reason, QStringLiteral("not a regular file"));
}

void tst_MappingFile::anUnreadableFileIsRefused()
{
    writeFile(path(), "secret");
    setMode(path(), 0);
    const Unprivileged user;
    const MappingFile::ReadResult result = MappingFile::read(path());
    QVERIFY(result.status == MappingFile::Status::Refused);
    QCOMPARE(result.reason, QStringLiteral("Permission denied"));
}

void tst_MappingFile::aFileAboveTheLimitIsRefused()
{
    QFile file(path());
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.resize(MappingFile::maximumSize + 1));
    const MappingFile::ReadResult result = MappingFile::read(path());
    QVERIFY(result.status == MappingFile::Status::Refused);
    QCOMPARE(result.reason, QStringLiteral("larger than 64 MiB"));
    QVERIFY(result.bytes.isEmpty());
}

void tst_MappingFile::aFileAtTheLimitIsRead()
{
    QFile file(path());
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.resize(MappingFile::maximumSize));
    const MappingFile::ReadResult result = MappingFile::read(path());
    QVERIFY(result.status == MappingFile::Status::Read);
    QCOMPARE(qint64(result.bytes.size()), MappingFile::maximumSize);
}

void tst_MappingFile::aMissingFileIsCreated()
{
    QVERIFY(replace(path(), "new"));
    QCOMPARE(contentOf(path()), QByteArray("new"));
    QCOMPARE(names(), QStringList(QStringLiteral("file.xml")));
}

void tst_MappingFile::anExistingFileIsReplacedNotOverwritten()
{
    writeFile(path(), "old and longer");
    QFile old(path());
    QVERIFY(old.open(QIODevice::ReadOnly));
    QVERIFY(replace(path(), "new"));
    QCOMPARE(contentOf(path()), QByteArray("new"));
    // Whoever has the old file open, or a machine that crashes now, still has all of it.
    QCOMPARE(old.readAll(), QByteArray("old and longer"));
    QCOMPARE(names(), QStringList(QStringLiteral("file.xml")));
}

void tst_MappingFile::permissionsAreKept_data()
{
    QTest::addColumn<unsigned>("mode");
    for (const unsigned mode : {0600U, 0640U, 0644U, 0666U, 0700U, 0604U}) {
        QTest::newRow(QByteArray::number(mode, 8).constData()) << mode;
    }
}

void tst_MappingFile::permissionsAreKept()
{
    QFETCH(unsigned, mode);
    writeFile(path(), "old");
    setMode(path(), mode);
    QVERIFY(replace(path(), "new"));
    QCOMPARE(modeOf(path()), mode);
}

void tst_MappingFile::aSymbolicLinkStaysAndItsTargetIsReplaced_data()
{
    QTest::addColumn<bool>("relative");
    QTest::newRow("relative") << true;
    QTest::newRow("absolute") << false;
}

void tst_MappingFile::aSymbolicLinkStaysAndItsTargetIsReplaced()
{
    QFETCH(bool, relative);
    QVERIFY(QDir(m_directory->path()).mkdir(QStringLiteral("elsewhere")));
    writeFile(path("elsewhere/real.xml"), "old");
    setMode(path("elsewhere/real.xml"), 0640);
    const QString target = relative ? QStringLiteral("elsewhere/real.xml") : path("elsewhere/real.xml");
    makeLink(target, path());
    QVERIFY(replace(path(), "new"));
    QCOMPARE(targetOf(path()), target);
    QCOMPARE(contentOf(path("elsewhere/real.xml")), QByteArray("new"));
    QCOMPARE(modeOf(path("elsewhere/real.xml")), 0640U);
    QCOMPARE(MappingFile::read(path()).bytes, QByteArray("new"));
}

void tst_MappingFile::linksToLinksAllStay()
{
    QVERIFY(QDir(m_directory->path()).mkdir(QStringLiteral("elsewhere")));
    writeFile(path("elsewhere/real.xml"), "old");
    makeLink(QStringLiteral("real.xml"), path("elsewhere/inner.xml"));
    makeLink(QStringLiteral("elsewhere/inner.xml"), path());
    QVERIFY(replace(path(), "new"));
    QCOMPARE(targetOf(path()), QStringLiteral("elsewhere/inner.xml"));
    QCOMPARE(targetOf(path("elsewhere/inner.xml")), QStringLiteral("real.xml"));
    QCOMPARE(contentOf(path("elsewhere/real.xml")), QByteArray("new"));
}

void tst_MappingFile::aDanglingLinkGetsItsTarget()
{
    makeLink(QStringLiteral("real.xml"), path());
    QVERIFY(replace(path(), "new"));
    QCOMPARE(targetOf(path()), QStringLiteral("real.xml"));
    QCOMPARE(contentOf(path("real.xml")), QByteArray("new"));
}

void tst_MappingFile::linksInACircleFail()
{
    makeLink(QStringLiteral("b"), path("a"));
    makeLink(QStringLiteral("a"), path("b"));
    QVERIFY(MappingFile::read(path("a")).status == MappingFile::Status::Missing);
    QVERIFY(!replace(path("a"), "new"));
    QVERIFY(!m_reason.isEmpty());
    QCOMPARE(targetOf(path("a")), QStringLiteral("b"));
}

void tst_MappingFile::asManyLinksAreFollowedAsTheSystemFollows()
{
    const auto link = [this](int number) { return path(qPrintable(QStringLiteral("link%1").arg(number))); };
    writeFile(link(0), "old");
    int links = 0;
    do {
        ++links;
        makeLink(link(links - 1), link(links));
    } while (QFile::exists(link(links)));
    QVERIFY(replace(link(links - 1), "new"));
    QCOMPARE(contentOf(link(0)), QByteArray("new"));
    QVERIFY(!replace(link(links), "newer"));
    QCOMPARE(m_reason, QStringLiteral("too many symbolic links"));
    QCOMPARE(contentOf(link(0)), QByteArray("new"));
    QCOMPARE(names().size(), links + 1); // each is still there, and nothing else
}

void tst_MappingFile::aFullDiskLeavesTheOldFile_data()
{
    QTest::addColumn<int>("limit");
    QTest::addColumn<int>("size");
    QTest::newRow("nothing fits, small document") << 0 << 100;
    QTest::newRow("a part fits, small document") << 50 << 100;
    QTest::newRow("a part fits, large document") << 100000 << 1000000;
    QTest::newRow("all but one byte") << 999999 << 1000000;
}

void tst_MappingFile::aFullDiskLeavesTheOldFile()
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

void tst_MappingFile::aDiskThatFailsLeavesTheOldFile()
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

void tst_MappingFile::aDiskThatKnowsNoSuchThingIsNoFailure()
{
    syncError = EINVAL;
    const bool replaced = replace(path(), "new");
    syncError = 0;
    QVERIFY(replaced);
    QCOMPARE(contentOf(path()), QByteArray("new"));
}

void tst_MappingFile::aFileIsMadeWritableForItsOwner()
{
    writeFile(path(), "old");
    setMode(path(), 0444);
    QVERIFY(MappingFile::makeWritable(path()));
    QCOMPARE(modeOf(path()), 0644U);
    QVERIFY(!MappingFile::makeWritable(path("no such")));
}

void tst_MappingFile::aDirectoryThatCannotBeWrittenLeavesTheOldFile()
{
    writeFile(path(), "old");
    setMode(path(), 0666);
    setMode(m_directory->path(), 0555);
    bool replaced = true;
    {
        const Unprivileged user;
        replaced = replace(path(), "new");
    }
    setMode(m_directory->path(), 0777);
    QVERIFY(!replaced);
    QVERIFY(!m_reason.isEmpty());
    QCOMPARE(contentOf(path()), QByteArray("old"));
}

void tst_MappingFile::aFileThatMustNotBeWrittenIsNotReplaced()
{
    writeFile(path(), "old");
    setMode(path(), 0444);
    const Unprivileged user;
    QVERIFY(!replace(path(), "new"));
    QVERIFY(!m_reason.isEmpty());
    QCOMPARE(contentOf(path()), QByteArray("old"));
}

void tst_MappingFile::aDirectoryIsNotReplaced()
{
    QVERIFY(QDir().mkdir(path()));
    QVERIFY(!replace(path(), "new"));
    QVERIFY(!m_reason.isEmpty());
    QVERIFY(QFileInfo(path()).isDir());
}

void tst_MappingFile::moreThanTheLimitIsNotWritten()
{
    writeFile(path(), "old");
    const QByteArray large(static_cast<int>(MappingFile::maximumSize) + 1, 'n');
    QVERIFY(!replace(path(), large));
    QCOMPARE(m_reason, QStringLiteral("larger than 64 MiB"));
    QCOMPARE(contentOf(path()), QByteArray("old"));
}

void tst_MappingFile::asMuchAsTheLimitIsWritten()
{
    QVERIFY(replace(path(), QByteArray(static_cast<int>(MappingFile::maximumSize), 'n')));
    QCOMPARE(QFileInfo(path()).size(), MappingFile::maximumSize);
}

void tst_MappingFile::whatAKilledWriteLeavesIsRemoved_data()
{
    QTest::addColumn<QString>("written");
    for (const char *name : {"custom.xml", "custom.xml.broken", "custom.xml.kept"}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

void tst_MappingFile::whatAKilledWriteLeavesIsRemoved()
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

void tst_MappingFile::usersFilesAreNoLeftovers()
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

void tst_MappingFile::anEarlierVersionCostsNoCopy()
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

void tst_MappingFile::onAnotherDiskAnEarlierVersionIsACopy()
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

void tst_MappingFile::aLinkedFilesEarlierVersionIsNoLink()
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

void tst_MappingFile::aStepThatCannotBeTakenBackLeavesAllAsItIs()
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

QTEST_GUILESS_MAIN(tst_MappingFile)
#include "tst_MappingFile.moc"
