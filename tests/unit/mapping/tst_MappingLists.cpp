#include "MappingFixtures.h"
#include "SessionInFolder.h"
#include "mapping/BrokenFile.h"
#include "mapping/LibraryKeeper.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"

#include <QDir>
#include <QFile>
#include <QPointer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

/// The mappings to choose from: the user's own, as they are saved and deleted, and the library's.
class tst_MappingLists : public QObject, private SessionInFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void cleanup() { end(); }

    void savingTwiceUnderANameListsBothAndDeletingTakesTheFirst();
    void savingLeavesTheWorkingCopyAlone();
    void aSaveThatFailedSaysWhy();
    void aFileThatIsNoneIsCopiedAsideBeforeASave();
    void aHundredCopiesOfFilesThatAreNoneAreLeft();
    void aMappingWithoutANameIsDeletedAndNoOther();
    void aDeletionThatFailedSaysWhy();

    void aNewLibraryReplacesTheList();
    void aLibraryWithoutMappingsTakesNoneAway();
    void withNothingKeptTheSeedIsTheLibrary();
    void aChosenFileShowsAsTheLibrary();

    void theListsAreOwnedAndTheOldOnesGoLater();
    void whoeverTakesAnOldMapOverKeepsIt();
};

void tst_MappingLists::savingTwiceUnderANameListsBothAndDeletingTakesTheFirst()
{
    load();
    const QString mine = QStringLiteral("Mine");
    QSignalSpy lists(m_session.get(), &MappingSession::listChanged);
    m_session->assign(3, Layer::Normal, key(65));
    QVERIFY(m_session->saveAs(mine));
    m_session->assign(3, Layer::Normal, key(66));
    QVERIFY(m_session->saveAs(mine));
    QCOMPARE(lists.size(), 2);
    QCOMPARE(names(m_session->custom()), (QStringList{mine, mine}));
    QCOMPARE(m_session->name(), mine);
    QVERIFY(m_session->remove(mine));
    QCOMPARE(lists.size(), 3);
    QCOMPARE(m_session->custom().size(), 1);
    QCOMPARE(m_session->custom().constFirst()->actions[3][Layer::Normal].key1, 66);
    QVERIFY(m_session->remove(QStringLiteral("no such"))); // not there afterwards: as it should be
    QCOMPARE(m_session->custom().size(), 1);
}

void tst_MappingLists::savingLeavesTheWorkingCopyAlone()
{
    load();
    m_session->assign(3, Layer::Normal, key(65));
    QVERIFY(m_session->saveAs(QString())); // a name is not asked for
    QVERIFY(!m_session->isKept());
    QVERIFY(!QFile::exists(path("current.xml")));
    QCOMPARE(names(m_session->custom()), QStringList{QStringLiteral("Unknown")});
}

void tst_MappingLists::aSaveThatFailedSaysWhy()
{
    writeFile(path("custom.xml"), "<ZR><MAPPING");
    const LogCapture log;
    load();
    const FileResult result = m_session->saveAs(QStringLiteral("Mine"));
    QVERIFY(!result);
    QVERIFY(!result.reason().isEmpty());
    QCOMPARE(m_session->name(), QString());
    QVERIFY(m_session->custom().isEmpty());

    writeFile(path("custom.xml"), "<OTHER/>");
    QVERIFY(!m_session->saveAs(QStringLiteral("Mine"))); // dropped: it must not look like a success
}

void tst_MappingLists::aFileThatIsNoneIsCopiedAsideBeforeASave()
{
    const QByteArray broken = "<ZR><MAPPING software=\"mine\">";
    writeFile(path("custom.xml"), broken);
    const LogCapture log;
    load();
    for (int times = 0; times < 3; ++times) { // once is enough
        const FileResult result = m_session->saveAs(QStringLiteral("new"));
        QVERIFY(!result);
        QCOMPARE(result.reason(), QStringLiteral("it is no mapping file; a copy of it lies beside it"));
        QVERIFY(contentOf(path("custom.xml")).startsWith(broken + "<?xml"));
        QCOMPARE(contentOf(path("custom.xml.broken")), broken);
    }
    writeFile(path("custom.xml"), "another");
    QVERIFY(!m_session->saveAs(QStringLiteral("new")));
    QCOMPARE(contentOf(path("custom.xml.broken")), broken);
    QCOMPARE(contentOf(path("custom.xml.broken2")), QByteArray("another"));

    // Without a copy nothing is added.
    writeFile(path("custom.xml"), "a third");
    QVERIFY(QDir().mkdir(path("custom.xml.broken3")));
    QVERIFY(!m_session->saveAs(QStringLiteral("new")));
    QCOMPARE(contentOf(path("custom.xml.broken4")), QByteArray("a third"));
}

void tst_MappingLists::aHundredCopiesOfFilesThatAreNoneAreLeft()
{
    for (int number = 1; number < 100; ++number) {
        writeFile(BrokenFile::copyName(path("custom.xml"), number), QByteArray::number(number));
    }
    writeFile(path("custom.xml"), "the last");
    const LogCapture log;
    load();
    QVERIFY(!m_session->saveAs(QStringLiteral("new")));
    QCOMPARE(contentOf(path("custom.xml.broken100")), QByteArray("the last"));
    writeFile(path("custom.xml"), "another");
    const FileResult result = m_session->saveAs(QStringLiteral("new"));
    QCOMPARE(result.reason(), QStringLiteral("it is no mapping file, and there are too many copies of it"));
    QCOMPARE(contentOf(path("custom.xml")), QByteArray("another"));
}

void tst_MappingLists::aMappingWithoutANameIsDeletedAndNoOther()
{
    const QByteArray none = "<MAPPING default=\"1\"/>";
    const QByteArray empty = "<MAPPING software=\"\"/>";
    for (const QByteArray &nameless : {none, empty}) {
        for (const bool first : {true, false}) {
            const QByteArray unknown = mapping("Unknown", 67);
            writeFile(path("custom.xml"), document(first ? nameless + unknown : unknown + nameless));
            restart();
            load();
            QCOMPARE(m_session->custom().size(), 2);
            const ZRButtonMap &map = *m_session->custom().at(first ? 0 : 1);
            QCOMPARE(map.name, QStringLiteral("Unknown"));
            QVERIFY(XmlMappingReader::isNameless(map));
            QVERIFY(!XmlMappingReader::isNameless(*m_session->custom().at(first ? 1 : 0)));
            QVERIFY(m_session->remove(QString())); // as the selector says it
            QCOMPARE(m_session->custom().size(), 1);
            QCOMPARE(m_session->custom().constFirst()->actions[3][Layer::Normal].key1, 67);
        }
    }
    writeFile(path("custom.xml"), document(none + mapping("Mine", 68)));
    restart();
    load();
    QVERIFY(m_session->remove(QStringLiteral("Unknown"))); // as the reader calls it
    QCOMPARE(names(m_session->custom()), QStringList{QStringLiteral("Mine")});
}

void tst_MappingLists::aDeletionThatFailedSaysWhy()
{
    const LogCapture log;
    load();
    QVERIFY(!m_session->remove(QStringLiteral("Mine"))); // there is no file
    writeFile(path("custom.xml"), "<ZR><MAPPING");
    const FileResult result = m_session->remove(QStringLiteral("Mine"));
    QVERIFY(!result && !result.reason().isEmpty());
}

void tst_MappingLists::aNewLibraryReplacesTheList()
{
    writeFile(path("ZR.xml"), document(mapping("First", 65)));
    load();
    writeFile(path("ZR.xml"), document(mapping("New", 66)));
    QSignalSpy replaced(m_session.get(), &MappingSession::replaced);
    QVERIFY(m_session->reloadLibrary());
    QCOMPARE(names(m_session->library()), QStringList{QStringLiteral("New")});
    QCOMPARE(replaced.size(), 0); // what is in use stays
    QCOMPARE(inUse(), 65);
    QCOMPARE(contentOf(LibraryKeeper::keptFile(path("ZR.xml"))), document(mapping("New", 66)));
}

void tst_MappingLists::aLibraryWithoutMappingsTakesNoneAway()
{
    writeFile(path("ZR.xml"), document(mapping("First", 65)));
    load();
    QSignalSpy lists(m_session.get(), &MappingSession::listChanged);
    writeFile(path("ZR.xml"), "<html><body/></html>");
    {
        LogCapture log;
        m_session->reloadLibrary();
        QCOMPARE(log.linesHolding(QStringLiteral("The library holds no mapping")).size(), 1);
    }
    writeFile(path("ZR.xml"), "<ZR");
    const LogCapture log;
    QVERIFY(!m_session->reloadLibrary());
    QCOMPARE(lists.size(), 0);
    QCOMPARE(names(m_session->library()), QStringList{QStringLiteral("First")});
}

void tst_MappingLists::withNothingKeptTheSeedIsTheLibrary()
{
    const QTemporaryDir seeds;
    writeFile(seeds.filePath(QStringLiteral("ZR.xml")), document(mapping("Seed", 65)));
    writeFile(path("ZR.xml"), "<html>Sign in</html>");
    const LogCapture log;
    m_session = std::make_unique<MappingSession>(MappingFiles(m_directory->path(), seeds.path()));
    load();
    QCOMPARE(names(m_session->library()), QStringList{QStringLiteral("Seed")});
    QCOMPARE(inUse(), 65);
}

void tst_MappingLists::aChosenFileShowsAsTheLibrary()
{
    writeFile(path("ZR.xml"), document(mapping("First", 65)));
    writeFile(path("elsewhere.xml"), document(mapping("Elsewhere", 66)));
    load();
    m_session->openXml(); // nobody to ask: as if cancelled
    QCOMPARE(names(m_session->library()), QStringList{QStringLiteral("First")});
    QString title;
    m_session->setFileChooser([&](const QString &asked, const QString &, const QString &) {
        title = asked;
        return path("elsewhere.xml");
    });
    m_session->openXml();
    QCOMPARE(title, QStringLiteral("Open Xml"));
    QCOMPARE(names(m_session->library()), QStringList{QStringLiteral("Elsewhere")});
    QCOMPARE(contentOf(LibraryKeeper::keptFile(path("ZR.xml"))), document(mapping("First", 65)));
}

void tst_MappingLists::theListsAreOwnedAndTheOldOnesGoLater()
{
    writeFile(path("ZR.xml"), document(mapping("First", 65)));
    writeFile(path("custom.xml"), document(mapping("Mine", 66)));
    load();
    const QPointer<ZRButtonMap> old = m_session->library().constFirst();
    QVERIFY(m_session->reloadLibrary());
    QVERIFY(old); // somebody may have it in hand
    QTRY_VERIFY(!old);
    const QPointer<ZRButtonMap> library = m_session->library().constFirst();
    const QPointer<ZRButtonMap> custom = m_session->custom().constFirst();
    m_session.reset();
    QVERIFY(!library && !custom);
}

void tst_MappingLists::whoeverTakesAnOldMapOverKeepsIt()
{
    writeFile(path("ZR.xml"), document(mapping("First", 65)));
    load();
    QObject taker;
    const QPointer<ZRButtonMap> old = m_session->library().constFirst();
    connect(m_session.get(), &MappingSession::listChanged, &taker, [&] { old->setParent(&taker); });
    QVERIFY(m_session->reloadLibrary());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(old);
}

QTEST_GUILESS_MAIN(tst_MappingLists)
#include "tst_MappingLists.moc"
