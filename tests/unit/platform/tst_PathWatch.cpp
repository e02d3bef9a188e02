#include "engine/platform/linux/PathWatch.h"
#include "tests/support/main/Main.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class tst_PathWatch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsOfComingGoingAndRights();
    void writingIsNoNews();
    void otherFilesAreNoNews();
    void aFolderThatIsNotThereIsNoHarm();

private:
    static void write(const QString &path)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::Append));
        file.write("x");
    }
};

void tst_PathWatch::tellsOfComingGoingAndRights()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("device"));
    int calls = 0;
    const PathWatch watch(path, [&calls] { ++calls; });
    write(path);
    QTRY_COMPARE(calls, 1);
    QVERIFY(QFile::setPermissions(path, QFile::ReadOwner));
    QTRY_COMPARE(calls, 2);
    QVERIFY(QFile::remove(path));
    QTRY_VERIFY(calls >= 3);
}

void tst_PathWatch::writingIsNoNews()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("device"));
    write(path);
    int calls = 0;
    const PathWatch watch(path, [&calls] { ++calls; });
    write(path);
    write(path);
    QVERIFY(QFile::setPermissions(path, QFile::ReadOwner)); // comes after what was written
    QTRY_COMPARE(calls, 1);
}

void tst_PathWatch::otherFilesAreNoNews()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("device"));
    int calls = 0;
    const PathWatch watch(path, [&calls] { ++calls; });
    write(folder.filePath(QStringLiteral("device2")));
    write(path);
    QTRY_COMPARE(calls, 1);
}

void tst_PathWatch::aFolderThatIsNotThereIsNoHarm()
{
    const PathWatch watch(QStringLiteral("/nonexistent/device"), [] { QFAIL("called"); });
    QCoreApplication::processEvents();
}

QTEST_GUILESS_MAIN(tst_PathWatch)

#include "tst_PathWatch.moc"
