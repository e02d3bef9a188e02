#include "app/DataDirectory.h"
#include "tests/support/main/Main.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class tst_DataDirectory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void createsTheFolderWithItsParentsAndEntersIt();
    void closesTheFolderToOthers();
    void copiesTheSeedFilesOnce();
    void copiesCanBeWrittenByTheirOwner();
    void neverReplacesTheUsersFile();
    void missingSeedFilesAreSkipped();
    void runsOnWhenTheFolderCannotBeCreated();

private:
    static void write(const QString &path, const QByteArray &content);
    static QByteArray read(const QString &path);

    std::unique_ptr<QTemporaryDir> m_root;
    QString m_data;
    QString m_seeds;
    QString m_previous;
};

void tst_DataDirectory::write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), qint64(content.size()));
}

QByteArray tst_DataDirectory::read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
}

void tst_DataDirectory::init()
{
    m_previous = QDir::currentPath();
    m_root = std::make_unique<QTemporaryDir>();
    m_data = m_root->filePath(QStringLiteral("a/b/data"));
    m_seeds = m_root->filePath(QStringLiteral("program"));
    QVERIFY(QDir().mkpath(m_seeds));
}

void tst_DataDirectory::cleanup()
{
    QDir::setCurrent(m_previous);
}

void tst_DataDirectory::createsTheFolderWithItsParentsAndEntersIt()
{
    DataDirectory::prepare(m_data, m_seeds);
    QCOMPARE(QDir::currentPath(), QDir(m_data).canonicalPath());
}

void tst_DataDirectory::closesTheFolderToOthers()
{
#ifdef Q_OS_UNIX
    const QFile::Permissions owners = QFile::ReadOwner | QFile::ExeOwner;
    QVERIFY(QDir().mkpath(m_data));
    QVERIFY(QFile::setPermissions(m_data, owners | QFile::ReadOther | QFile::WriteOther | QFile::WriteGroup));
    DataDirectory::prepare(m_data, m_seeds);
    const QFile::Permissions users = QFile::ReadUser | QFile::WriteUser | QFile::ExeUser;
    QCOMPARE(QFile::permissions(m_data) & ~users, owners); // what is for reading only stays so
#else
    QSKIP("What is in a user's folder has its rights.");
#endif
}

void tst_DataDirectory::copiesTheSeedFilesOnce()
{
    write(m_seeds + QStringLiteral("/ZR.xml"), "library");
    write(m_seeds + QStringLiteral("/custom.xml"), "custom");
    DataDirectory::prepare(m_data, m_seeds);
    QCOMPARE(read(m_data + QStringLiteral("/ZR.xml")), QByteArray("library"));
    QCOMPARE(read(m_data + QStringLiteral("/custom.xml")), QByteArray("custom"));

    write(m_seeds + QStringLiteral("/ZR.xml"), "newer");
    DataDirectory::prepare(m_data, m_seeds);
    QCOMPARE(read(m_data + QStringLiteral("/ZR.xml")), QByteArray("library"));
}

void tst_DataDirectory::copiesCanBeWrittenByTheirOwner()
{
    const QString library = QStringLiteral("/ZR.xml");
    write(m_seeds + library, "library");
    QVERIFY(QFile::setPermissions(m_seeds + library, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
    DataDirectory::prepare(m_data, m_seeds);
    QVERIFY(QFile::permissions(m_data + library) & QFile::WriteOwner);
    QVERIFY(!(QFile::permissions(m_seeds + library) & QFile::WriteOwner));
}

void tst_DataDirectory::neverReplacesTheUsersFile()
{
    QVERIFY(QDir().mkpath(m_data));
    write(m_data + QStringLiteral("/custom.xml"), "mine");
    write(m_seeds + QStringLiteral("/custom.xml"), "shipped");
    DataDirectory::prepare(m_data, m_seeds);
    QCOMPARE(read(m_data + QStringLiteral("/custom.xml")), QByteArray("mine"));
}

void tst_DataDirectory::missingSeedFilesAreSkipped()
{
    DataDirectory::prepare(m_data, m_seeds);
    QCOMPARE(QDir(m_data).entryList(QDir::Files).size(), 0);
}

void tst_DataDirectory::runsOnWhenTheFolderCannotBeCreated()
{
    write(m_root->filePath(QStringLiteral("a")), "a file where a folder should be");
    const QString before = QDir::currentPath();
    QTest::ignoreMessage(
        QtWarningMsg,
        qPrintable(QStringLiteral("cannot create the folder %1: mappings will not be kept").arg(m_data)));
    DataDirectory::prepare(m_data, m_seeds);
    QCOMPARE(QDir::currentPath(), before);
}

QTEST_GUILESS_MAIN(tst_DataDirectory)
#include "tst_DataDirectory.moc"
