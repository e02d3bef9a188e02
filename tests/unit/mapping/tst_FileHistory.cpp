#include "MappingFixtures.h"
#include "mapping/FileHistory.h"
#include "mapping/MappingFile.h"
#include "mapping/VersionRestore.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

/// What becomes of a file's earlier content.
class tst_FileHistory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void aFileThatIsNotThereHasNoVersion();
    void aVersionHoldsWhatTheFileHeld();
    void aVersionStaysWhenTheFileIsReplaced();
    void atMostOneAMinute();
    void theClockMayBeSetBack();
    void theSameIsKeptOnce();
    void thirtyAndOneADayForThirtyDaysAreKept();
    void eachFileHasItsOwn();
    void otherFilesAreLeftAlone();
    void whatAKilledCopyLeftIsRemoved();
    void aFailureIsLogged();

    void aVersionIsBroughtBack_data();
    void aVersionIsBroughtBack();
    void whatIsNoneIsRefused_data();
    void whatIsNoneIsRefused();
    void withoutAPlaceForThePresentOneNothingIsRestored();
    void aVersionIsFoundByItsName();

private:
    QString path(const QString &name) const { return m_directory->filePath(name); }
    QString custom() const { return path(QStringLiteral("custom.xml")); }
    QStringList history() const
    {
        return QDir(path(QStringLiteral("history"))).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    void rewrite(const QByteArray &content, const QDateTime &time)
    {
        FileHistory::note(custom(), time);
        QVERIFY(MappingFile::replace(custom(), content));
    }

    const QDateTime m_noon{QDate(2026, 3, 1), QTime(12, 0), Qt::UTC};
    std::unique_ptr<QTemporaryDir> m_directory;
};

void tst_FileHistory::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
}

void tst_FileHistory::aFileThatIsNotThereHasNoVersion()
{
    QVERIFY(FileHistory::note(custom(), m_noon));
    QVERIFY(!QFile::exists(path(QStringLiteral("history"))));
    QVERIFY(FileHistory::versions(custom()).isEmpty());
}

void tst_FileHistory::aVersionHoldsWhatTheFileHeld()
{
    writeFile(custom(), "old");
    QVERIFY(FileHistory::note(custom(), m_noon.addMSecs(7)));
    const auto versions = FileHistory::versions(custom());
    QCOMPARE(versions.size(), 1);
    QCOMPARE(versions.constFirst().time, m_noon.addMSecs(7));
    QCOMPARE(versions.constFirst().path, path(QStringLiteral("history/custom-20260301T120000007Z.xml")));
    QCOMPARE(contentOf(versions.constFirst().path), QByteArray("old"));
}

void tst_FileHistory::aVersionStaysWhenTheFileIsReplaced()
{
    writeFile(custom(), "old");
    rewrite("new", m_noon);
    QCOMPARE(contentOf(custom()), QByteArray("new"));
    QCOMPARE(contentOf(FileHistory::versions(custom()).constFirst().path), QByteArray("old"));
}

void tst_FileHistory::atMostOneAMinute()
{
    writeFile(custom(), "1");
    rewrite("2", m_noon);
    rewrite("at once", m_noon);
    rewrite("3", m_noon.addSecs(59));
    QCOMPARE(history().size(), 1);
    rewrite("4", m_noon.addSecs(60));
    QCOMPARE(history().size(), 2);
    QCOMPARE(contentOf(FileHistory::versions(custom()).constFirst().path), QByteArray("3"));
    QVERIFY(FileHistory::noteAnyway(custom(), m_noon.addSecs(60)));
    QCOMPARE(FileHistory::versions(custom()).constFirst().time, m_noon.addSecs(60).addMSecs(1));
    QCOMPARE(contentOf(FileHistory::versions(custom()).constFirst().path), QByteArray("4"));
}

void tst_FileHistory::theClockMayBeSetBack()
{
    writeFile(custom(), "1");
    rewrite("2", m_noon);
    rewrite("3", m_noon.addDays(-2));
    QCOMPARE(history().size(), 2);
    QCOMPARE(contentOf(path(QStringLiteral("history/") + history().constFirst())), QByteArray("2"));
}

void tst_FileHistory::theSameIsKeptOnce()
{
    writeFile(custom(), "1");
    rewrite("1", m_noon);
    rewrite("1", m_noon.addSecs(100));
    rewrite("2", m_noon.addSecs(200));
    QCOMPARE(history().size(), 1);
    rewrite("1", m_noon.addSecs(300));
    QCOMPARE(history().size(), 2);
}

void tst_FileHistory::thirtyAndOneADayForThirtyDaysAreKept()
{
    // Three a day for fifty days, and a busy last one. Noon is the same day wherever the test runs, nearly.
    writeFile(custom(), "begin");
    int number = 0;
    for (int day = 49; day >= 1; --day) {
        for (int minute = 0; minute < 3; ++minute) {
            rewrite(QByteArray::number(++number), m_noon.addDays(-day).addSecs(minute * 60));
        }
    }
    for (int minute = 0; minute < 40; ++minute) {
        rewrite(QByteArray::number(++number), m_noon.addSecs(minute * 60));
    }
    const auto versions = FileHistory::versions(custom());
    QCOMPARE(versions.size(), 30 + 29);
    QCOMPARE(versions.at(29).time, m_noon.addSecs(10 * 60));
    for (int day = 1; day <= 29; ++day) {
        QCOMPARE(versions.at(29 + day).time, m_noon.addDays(-day).addSecs(2 * 60)); // the day's last
    }
    QCOMPARE(history().size(), versions.size());
}

void tst_FileHistory::eachFileHasItsOwn()
{
    const QString current = path(QStringLiteral("current.xml"));
    writeFile(custom(), "custom");
    writeFile(current, "current");
    QVERIFY(FileHistory::note(custom(), m_noon));
    QVERIFY(FileHistory::note(current, m_noon));
    QCOMPARE(FileHistory::versions(custom()).size(), 1);
    QCOMPARE(contentOf(FileHistory::versions(current).constFirst().path), QByteArray("current"));
}

void tst_FileHistory::otherFilesAreLeftAlone()
{
    QVERIFY(QDir(m_directory->path()).mkdir(QStringLiteral("history")));
    const QStringList others{QStringLiteral("custom-20250101T000000000Z.xml.bak"),
                             QStringLiteral("custom-99999999T999999999Z.xml"), QStringLiteral("custom.xml"),
                             QStringLiteral("mine-20250101T000000000Z.xml"), QStringLiteral("notes.txt")};
    for (const QString &name : others) {
        writeFile(path(QStringLiteral("history/") + name), "mine");
    }
    writeFile(custom(), "begin");
    for (int minute = 0; minute < 40; ++minute) {
        rewrite(QByteArray::number(minute), m_noon.addSecs(minute * 60));
    }
    QCOMPARE(FileHistory::versions(custom()).size(), 30);
    for (const QString &name : others) {
        QVERIFY2(history().contains(name), qPrintable(name));
    }
}

void tst_FileHistory::whatAKilledCopyLeftIsRemoved()
{
    QVERIFY(QDir(m_directory->path()).mkdir(QStringLiteral("history")));
    writeFile(path(QStringLiteral("history/custom-20250101T000000000Z.xml.veltrix-0123456789abcdef")),
              "half");
    writeFile(custom(), "old");
    QVERIFY(FileHistory::note(custom(), m_noon));
    QCOMPARE(history(), QStringList{QStringLiteral("custom-20260301T120000000Z.xml")});
}

void tst_FileHistory::aFailureIsLogged()
{
    writeFile(custom(), "old");
    writeFile(path(QStringLiteral("history")), "a file of the user's");
    LogCapture log;
    QVERIFY(!FileHistory::note(custom(), m_noon));
    QCOMPARE(log.linesHolding(QStringLiteral("No earlier version")).size(), 1);
    QCOMPARE(contentOf(path(QStringLiteral("history"))), QByteArray("a file of the user's"));
}

void tst_FileHistory::aVersionIsBroughtBack_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("file");
    QTest::newRow("history") << QStringLiteral("history/custom-20260101T000000000Z.xml")
                             << QStringLiteral("custom.xml");
    QTest::newRow("working copy") << QStringLiteral("history/current-20260101T000000000Z.xml")
                                  << QStringLiteral("current.xml");
    QTest::newRow("programs") << QStringLiteral("history/programs-20260101T000000000Z.xml")
                              << QStringLiteral("programs.xml");
    QTest::newRow("from elsewhere") << QStringLiteral("custom-20260101T000000000Z.xml")
                                    << QStringLiteral("custom.xml");
    QTest::newRow("a backup") << QStringLiteral("history/custom.xml") << QStringLiteral("custom.xml");
}

void tst_FileHistory::aVersionIsBroughtBack()
{
    QFETCH(QString, version);
    QFETCH(QString, file);
    const QByteArray content = "<ZR>\n\n <!-- mine --> <MAPPING program='gimp' software='Mix'/></ZR>";
    QVERIFY(QDir(m_directory->path()).mkdir(QStringLiteral("history")));
    writeFile(path(version), content);
    writeFile(path(file), "present");
    const MappingFiles files(m_directory->path());
    QCOMPARE(VersionRestore::fileOf(path(version), files), path(file));
    const FileResult result = VersionRestore::restore(path(version), files);
    QVERIFY2(result, qPrintable(result.reason()));
    QCOMPARE(contentOf(path(file)), content); // as it is, byte for byte
    QCOMPARE(contentOf(FileHistory::versions(path(file)).constFirst().path), QByteArray("present"));
}

void tst_FileHistory::whatIsNoneIsRefused_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("reason");
    const QString custom = QStringLiteral("copy/custom.xml");
    const QString current = QStringLiteral("copy/current.xml");
    QTest::newRow("damaged") << custom << QByteArray("<ZR>\n<MAPPING software=\"Mix\"></ZR>\n")
                             << QStringLiteral("line 2: ");
    QTest::newRow("cut off") << custom << QByteArray("<ZR>\n<MAPP") << QStringLiteral("line 2: ");
    QTest::newRow("foreign") << custom << QByteArray("<!-- a page -->\n<html><body/></html>")
                             << QStringLiteral("line 2: <html> is no mapping file's (column ");
    QTest::newRow("foreign, with a long name")
        << custom << "<" + QByteArray(50, 'x') + "/>"
        << QStringLiteral("line 1: <%1> is no mapping file's (column ").arg(QString(40, QLatin1Char('x')));
    QTest::newRow("empty") << custom << QByteArray() << QStringLiteral("line 1: ");
    QTest::newRow("no mapping") << current << QByteArray("<ZR/>") << QStringLiteral("it holds no mapping");
    QTest::newRow("a mapping of nobody")
        << QStringLiteral("copy/programs.xml") << QByteArray("<ZR><MAPPING software=\"Mix\"/></ZR>")
        << QStringLiteral("it does not give each mapping a program of its own");
    QTest::newRow("another name") << QStringLiteral("copy/mine.xml") << QByteArray("<ZR/>")
                                  << QStringLiteral("by its name it is no version of");
}

void tst_FileHistory::whatIsNoneIsRefused()
{
    QFETCH(QString, version);
    QFETCH(QByteArray, content);
    QFETCH(QString, reason);
    QVERIFY(QDir(m_directory->path()).mkdir(QStringLiteral("copy")));
    writeFile(path(version), content);
    writeFile(custom(), "present");
    const FileResult result = VersionRestore::restore(path(version), MappingFiles(m_directory->path()));
    QVERIFY(!result);
    QVERIFY2(result.reason().startsWith(reason), qPrintable(result.reason()));
    QVERIFY2(!result.reason().contains(QLatin1Char('\n')), qPrintable(result.reason()));
    QCOMPARE(contentOf(custom()), QByteArray("present"));
    QVERIFY(!QFile::exists(path(QStringLiteral("current.xml"))));
    QVERIFY(history().isEmpty());
    QVERIFY(!VersionRestore::restore(path(QStringLiteral("copy/none/custom.xml")),
                                     MappingFiles(m_directory->path())));
}

void tst_FileHistory::withoutAPlaceForThePresentOneNothingIsRestored()
{
    QVERIFY(QDir(m_directory->path()).mkdir(QStringLiteral("copy")));
    writeFile(path(QStringLiteral("copy/custom.xml")), "<ZR/>");
    writeFile(path(QStringLiteral("history")), "a file of the user's");
    writeFile(custom(), "present");
    const LogCapture log;
    QVERIFY(
        !VersionRestore::restore(path(QStringLiteral("copy/custom.xml")), MappingFiles(m_directory->path())));
    QCOMPARE(contentOf(custom()), QByteArray("present"));
}

void tst_FileHistory::aVersionIsFoundByItsName()
{
    const MappingFiles files(m_directory->path());
    const QString name = QStringLiteral("custom-20260101T000000000Z.xml");
    QCOMPARE(VersionRestore::find(name, files), name);
    QVERIFY(QDir(m_directory->path()).mkdir(QStringLiteral("history")));
    writeFile(path(QStringLiteral("history/") + name), "<ZR/>");
    QCOMPARE(VersionRestore::find(name, files), path(QStringLiteral("history/") + name));
    QCOMPARE(VersionRestore::find(path(name), files), path(name));
}

QTEST_GUILESS_MAIN(tst_FileHistory)
#include "tst_FileHistory.moc"
