#include "FileInFolder.h"
#include "tests/support/main/Main.h"

#include <QFileInfo>
#include <QTest>

#include <array>

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

QString targetOf(const QString &link)
{
    std::array<char, 4096> target{};
    const ssize_t length = readlink(QFile::encodeName(link).constData(), target.data(), target.size());
    return length < 0 ? QString() : QFile::decodeName(QByteArray(target.data(), static_cast<int>(length)));
}

} // namespace

/// How a file is read and replaced: limits, permissions, links.
class tst_MappingFile : public QObject, private FileInFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }

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
    void aFileIsMadeWritableForItsOwner();
    void aDirectoryThatCannotBeWrittenLeavesTheOldFile();
    void aFileThatMustNotBeWrittenIsNotReplaced();
    void aDirectoryIsNotReplaced();
    void moreThanTheLimitIsNotWritten();
    void asMuchAsTheLimitIsWritten();
};

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

QTEST_GUILESS_MAIN(tst_MappingFile)
#include "tst_MappingFile.moc"
