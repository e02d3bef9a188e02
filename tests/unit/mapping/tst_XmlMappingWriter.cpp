#include "MappingFixtures.h"
#include "mapping/MappingFile.h"
#include "mapping/SpecialAction.h"
#include "mapping/XmlMappingWriter.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

class tst_XmlMappingWriter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void aSavedFileLooksExactlyLikeThis();
    void everyFieldButTheKnobsIsReadBack();
    void aMissingFileIsCreatedWithOneMapping_data();
    void aMissingFileIsCreatedWithOneMapping();
    void savingTwiceAloneLeavesOneMapping();
    void savingTwiceIntoTheCustomFileLeavesTwo();
    void theSavedMappingIsTheLastChildOfTheRoot();
    void whatStoodInTheFileIsKept();
    void theDeclarationStaysTheSameWhateverIsRewritten();
    void filesInOtherEncodingsBecomeUtf8();
    void aRootOfAnotherNameDropsTheMappingAndRewritesTheFile();
    void charactersThatXmlCannotCarryAreDropped_data();
    void charactersThatXmlCannotCarryAreDropped();
    void facesAreKeptWhereverTheyStand();
    void arrowNamesSurviveByteForByte();
    void savingIsLogged();
    void newMapListReadyIsNeverEmitted();
    void theDataDirectoryIsTheApplicationsByDefault();
    void aMissingDirectoryIsNotCreated();
    void noMappingIsNoMapping();

    void removingTakesTheFirstOfTheName();
    void removingMindsTheCase();
    void removingAnUnknownNameRewritesTheSameContent();
    void mappingsWithoutANameAreNotThoseCalledUnknown_data();
    void mappingsWithoutANameAreNotThoseCalledUnknown();
    void removingLooksAtChildrenOfTheRootOnly();
    void removingFromAMissingFileCreatesNone();
    void removingFromAMalformedFileLeavesItAlone();
    void removingFromAnotherRootRewritesTheFile();
    void removingIsLogged();

    void aDocumentTooLargeToBeReadAgainIsNotWritten();

private:
    QString path(const QString &name = QStringLiteral("/custom.xml")) const;

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<XmlMappingWriter> m_writer;
    std::unique_ptr<LogCapture> m_log;
};

namespace
{

QString currentFile()
{
    return QStringLiteral("/current.xml");
}

QStringList namesIn(const QString &path)
{
    QStringList names;
    for (const auto &map : mapsOf(path)) {
        names.append(map->name);
    }
    return names;
}

} // namespace

void tst_XmlMappingWriter::initTestCase()
{
    // The order of attributes follows the hash; with this seed it is the same everywhere.
    qSetGlobalQHashSeed(0);
    QStandardPaths::setTestModeEnabled(true);
}

void tst_XmlMappingWriter::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_writer = std::make_unique<XmlMappingWriter>(m_directory->path());
    m_log = std::make_unique<LogCapture>();
}

void tst_XmlMappingWriter::cleanup()
{
    QCOMPARE(m_log->warnings(), QStringList());
    m_log.reset();
    // Nothing but mapping files is left behind.
    const QStringList files = QDir(m_directory->path()).entryList(QDir::Files | QDir::Hidden);
    for (const QString &file : files) {
        QVERIFY2(file == QLatin1String("custom.xml") || file == QLatin1String("current.xml"),
                 qPrintable(file));
    }
}

QString tst_XmlMappingWriter::path(const QString &name) const
{
    return m_directory->path() + name;
}

void tst_XmlMappingWriter::aSavedFileLooksExactlyLikeThis()
{
    m_writer->saveMap(sampleMap(QStringLiteral("current_map")).get(), currentFile(), true);
    const QByteArray expected = contentOf(QStringLiteral(VELTRIX_TEST_DATA "/mappings/golden/current.xml"));
    QCOMPARE(contentOf(path(currentFile())), expected);
}

void tst_XmlMappingWriter::everyFieldButTheKnobsIsReadBack()
{
    const auto written = sampleMap(QStringLiteral("  A name & <more>\n "));
    m_writer->saveToCustom(written.get());
    const auto maps = mapsOf(path());
    QCOMPARE(maps.size(), std::size_t(1));
    QCOMPARE(maps.front()->name, written->name);
    for (int button = 0; button < ActionTable::controlCount; ++button) {
        for (const Layer layer : Layers::all) {
            const shortCut &read = maps.front()->actions[button][layer];
            const shortCut expected = asReadBack(written->actions[button][layer]);
            QCOMPARE(read.label, expected.label);
            QVERIFY2(read == expected,
                     qPrintable(QStringLiteral("%1 %2").arg(button).arg(Layers::number(layer))));
        }
    }
}

void tst_XmlMappingWriter::aMissingFileIsCreatedWithOneMapping_data()
{
    QTest::addColumn<bool>("alone");
    QTest::newRow("alone") << true;
    QTest::newRow("appending") << false;
}

void tst_XmlMappingWriter::aMissingFileIsCreatedWithOneMapping()
{
    QFETCH(bool, alone);
    const ZRButtonMap map(QStringLiteral("current_map"), nullptr);
    m_writer->saveMap(&map, currentFile(), alone);
    const QByteArray content = contentOf(path(currentFile()));
    QVERIFY(content.startsWith(
        "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n<ZR>\n"
        " <MAPPING software=\"current_map\">\n  <BUTTON id=\"0\">\n   <NORMAL label=\"\">\n"));
    QVERIFY(content.endsWith(" </MAPPING>\n</ZR>\n"));
    QCOMPARE(content.count("<MAPPING"), 1);
    QCOMPARE(content.count("<ZR"), 1);
    QCOMPARE(content.count("<BUTTON"), 10);
    QVERIFY(m_log->take(QtInfoMsg, QStringLiteral("custom XML created")));
}

void tst_XmlMappingWriter::savingTwiceAloneLeavesOneMapping()
{
    m_writer->saveMap(sampleMap(QStringLiteral("first")).get(), currentFile(), true);
    m_writer->saveMap(sampleMap(QStringLiteral("second")).get(), currentFile(), true);
    QCOMPARE(namesIn(path(currentFile())), QStringList(QStringLiteral("second")));
}

void tst_XmlMappingWriter::savingTwiceIntoTheCustomFileLeavesTwo()
{
    m_writer->saveToCustom(sampleMap(QStringLiteral("same")).get());
    m_writer->saveToCustom(sampleMap(QStringLiteral("same")).get());
    QCOMPARE(namesIn(path()), (QStringList{QStringLiteral("same"), QStringLiteral("same")}));
    QVERIFY(m_log->take(QtInfoMsg, QStringLiteral("custom XML created")));
}

void tst_XmlMappingWriter::theSavedMappingIsTheLastChildOfTheRoot()
{
    writeFile(path(), "<ZR><MAPPING software='a'/><!-- end --></ZR><!-- behind -->");
    const ZRButtonMap map(QStringLiteral("b"), nullptr);
    m_writer->saveToCustom(&map);
    const QByteArray content = contentOf(path());
    QVERIFY(content.indexOf("<!-- end -->") < content.indexOf("software=\"b\""));
    QVERIFY(content.endsWith(" </MAPPING>\n</ZR>\n<!-- behind -->\n"));
    QCOMPARE(namesIn(path()), (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
    QVERIFY(!m_log->take(QtInfoMsg, QStringLiteral("custom XML created")));
}

void tst_XmlMappingWriter::whatStoodInTheFileIsKept()
{
    const QByteArray before =
        "<!DOCTYPE ZR SYSTEM 'x.dtd'><?style sheet?><ZR version='2'><!-- mine --><OTHER a='1'>"
        " text <![CDATA[ <raw> ]]></OTHER><MAPPING software='a' default='yes'><BUTTON id='1'>"
        "<NORMAL os='mac' label='L'><KEY1 type='hex'>1B</KEY1></NORMAL></BUTTON></MAPPING></ZR>";
    writeFile(path(), before);
    m_writer->removeMap(QStringLiteral("not there"));
    const QByteArray content = contentOf(path());
    for (const char *part :
         {"<!DOCTYPE ZR SYSTEM 'x.dtd'>", "<?style sheet?>", "version=\"2\"", "<!-- mine -->",
          "<![CDATA[ <raw> ]]>", "default=\"yes\"", "os=\"mac\"", "<KEY1 type=\"hex\">1B</KEY1>"}) {
        QVERIFY2(content.contains(part), part);
    }
}

void tst_XmlMappingWriter::theDeclarationStaysTheSameWhateverIsRewritten()
{
    const QByteArray declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
    const ZRButtonMap map(QStringLiteral("a"), nullptr);
    for (int i = 0; i < 3; ++i) {
        m_writer->saveToCustom(&map);
        QVERIFY(contentOf(path()).startsWith(declaration + "<ZR>"));
        m_writer->removeMap(QStringLiteral("b"));
        QVERIFY(contentOf(path()).startsWith(declaration + "<ZR>"));
    }
    writeFile(path(), "<?xml version='1.0' standalone='no'?><ZR/>");
    m_writer->removeMap(QStringLiteral("b"));
    QCOMPARE(contentOf(path()),
             QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?>\n<ZR/>\n"));
    writeFile(path(), "<ZR/>");
    m_writer->removeMap(QStringLiteral("b"));
    QCOMPARE(contentOf(path()), QByteArray("<ZR/>\n"));
}

void tst_XmlMappingWriter::filesInOtherEncodingsBecomeUtf8()
{
    for (const char *name : {"latin1-declared", "utf16-bom", "utf16-without-bom", "utf8-bom"}) {
        const QString source =
            QStringLiteral(VELTRIX_TEST_DATA "/mappings/good/%1.xml").arg(QLatin1String(name));
        const QStringList before = namesIn(source);
        writeFile(path(), contentOf(source));
        m_writer->removeMap(QStringLiteral("not there"));
        QVERIFY2(contentOf(path()).startsWith("<?xml version=\"1.0\" encoding=\"UTF-8\""), name);
        QVERIFY2(contentOf(path()).contains(before.first().toUtf8()), name);
        QCOMPARE(namesIn(path()), before);
    }
}

void tst_XmlMappingWriter::aRootOfAnotherNameDropsTheMappingAndRewritesTheFile()
{
    writeFile(path(), "<LIBRARY><ZR><MAPPING software='a'/></ZR></LIBRARY>");
    const ZRButtonMap map(QStringLiteral("b"), nullptr);
    m_writer->saveToCustom(&map);
    QCOMPARE(contentOf(path()),
             QByteArray("<LIBRARY>\n <ZR>\n  <MAPPING software=\"a\"/>\n </ZR>\n</LIBRARY>\n"));
}

void tst_XmlMappingWriter::charactersThatXmlCannotCarryAreDropped_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("kept");
    QTest::newRow("control characters") << QString::fromUtf8("a\x01\x1F\x7F"
                                                             "b")
                                        << QString::fromUtf8("a\x7F"
                                                             "b");
    QTest::newRow("NUL") << QStringLiteral("a\0b") << "ab";
    QTest::newRow("high half") << QStringLiteral("a") + QChar(0xD83D) + QStringLiteral("b") << "ab";
    QTest::newRow("low half") << QStringLiteral("a") + QChar(0xDE00) + QStringLiteral("b") << "ab";
    QTest::newRow("halves the wrong way round") << QString(QChar(0xDE00)) + QChar(0xD83D) << "";
    QTest::newRow("high half at the end") << QStringLiteral("a") + QChar(0xD83D) << "a";
    QTest::newRow("noncharacters") << QStringLiteral("a") + QChar(0xFFFE) + QChar(0xFFFF) << "a";
    QTest::newRow("only such") << QString(QChar(1)) << "";
}

void tst_XmlMappingWriter::charactersThatXmlCannotCarryAreDropped()
{
    QFETCH(QString, text);
    QFETCH(QString, kept);
    ZRButtonMap map(text, nullptr);
    map.actions[3][Layer::Shift1].label = text;
    m_writer->saveToCustom(&map);
    QVERIFY(m_log->take(QtWarningMsg, QStringLiteral("dropped")));
    const auto maps = mapsOf(path());
    QCOMPARE(maps.size(), std::size_t(1));
    QCOMPARE(maps.front()->name, kept.isEmpty() ? QStringLiteral("Unknown") : kept);
    QCOMPARE(maps.front()->actions[3][Layer::Shift1].label, kept);
}

void tst_XmlMappingWriter::facesAreKeptWhereverTheyStand()
{
    const QString face = QString::fromUtf8("\U0001F600"); // of two halves
    const ZRButtonMap map(face + QLatin1Char('a') + face + face, nullptr);
    m_writer->saveToCustom(&map);
    QCOMPARE(namesIn(path()), QStringList{map.name});
}

void tst_XmlMappingWriter::arrowNamesSurviveByteForByte()
{
    ZRButtonMap map(QStringLiteral("arrows"), nullptr);
    map.actions[0][Layer::Normal].key1 = SPECIAL_ACTION;
    map.actions[0][Layer::Normal].key2 = 8;
    map.actions[0][Layer::Normal].label = specialActionName(8);
    map.actions[0][Layer::Shift1].key1 = SPECIAL_ACTION;
    map.actions[0][Layer::Shift1].key2 = 7;
    for (int round = 0; round < 3; ++round) { // reading and writing again changes nothing either
        m_writer->saveMap(&map, currentFile(), true);
        const QByteArray content = contentOf(path(currentFile()));
        QVERIFY(content.contains("<KEY1 type=\"special\"> \xE2\x86\x93  \xE2\x86\x91 Key</KEY1>"));
        QVERIFY(content.contains("<KEY1 type=\"special\">\xE2\x86\x90 \xE2\x86\x92 Key</KEY1>"));
        QVERIFY(content.contains("<NORMAL label=\" \xE2\x86\x93  \xE2\x86\x91 Key\">"));
        const auto maps = mapsOf(path(currentFile()));
        QCOMPARE(maps.front()->actions[0][Layer::Normal].key2, 8);
        QCOMPARE(maps.front()->actions[0][Layer::Normal].label, specialActionName(8));
        QCOMPARE(maps.front()->actions[0][Layer::Shift1].key2, 7);
        map.actions[0][Layer::Normal].label = maps.front()->actions[0][Layer::Normal].label;
    }
}

void tst_XmlMappingWriter::savingIsLogged()
{
    const ZRButtonMap map(QStringLiteral("My map"), nullptr);
    m_writer->saveToCustom(&map);
    m_writer->saveToCustom(&map);
    QCOMPARE(m_log->takeAll(QtInfoMsg),
             (QStringList{QStringLiteral("custom XML created"), QStringLiteral("Save to XML: My map"),
                          QStringLiteral("Save to XML: My map")}));
}

void tst_XmlMappingWriter::newMapListReadyIsNeverEmitted()
{
    QSignalSpy spy(m_writer.get(), &XmlMappingWriter::newMapListReady);
    m_writer->saveToCustom(sampleMap(QStringLiteral("a")).get());
    m_writer->removeMap(QStringLiteral("a"));
    QCOMPARE(spy.count(), 0);
}

void tst_XmlMappingWriter::theDataDirectoryIsTheApplicationsByDefault()
{
    const QString directory = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    QVERIFY(QDir().mkpath(directory));
    QFile::remove(directory + currentFile());
    const ZRButtonMap map(QStringLiteral("here"), nullptr);
    XmlMappingWriter().saveMap(&map, currentFile(), true);
    QCOMPARE(namesIn(directory + currentFile()), QStringList(QStringLiteral("here")));
    QVERIFY(QFile::remove(directory + currentFile()));
}

void tst_XmlMappingWriter::aMissingDirectoryIsNotCreated()
{
    const QString directory = path(QStringLiteral("/missing"));
    const ZRButtonMap map(QStringLiteral("a"), nullptr);
    XmlMappingWriter(directory).saveToCustom(&map);
    QVERIFY(!QFile::exists(directory));
    QVERIFY(m_log->take(QtWarningMsg, QStringLiteral("missing/custom.xml")));
}

void tst_XmlMappingWriter::noMappingIsNoMapping()
{
    m_writer->saveToCustom(nullptr);
    QVERIFY(!QFile::exists(path()));
    QVERIFY(m_log->take(QtWarningMsg, QStringLiteral("no mapping")));
}

void tst_XmlMappingWriter::removingTakesTheFirstOfTheName()
{
    for (const char *name : {"a", "b", "c", "b"}) {
        auto map = sampleMap(QString::fromLatin1(name));
        map->actions[0][Layer::Normal].label = QString::number(namesIn(path()).size());
        m_writer->saveToCustom(map.get());
    }
    m_writer->removeMap(QStringLiteral("b"));
    QCOMPARE(namesIn(path()), (QStringList{QStringLiteral("a"), QStringLiteral("c"), QStringLiteral("b")}));
    QCOMPARE(mapsOf(path()).back()->actions[0][Layer::Normal].label, QStringLiteral("3"));
    m_writer->removeMap(QStringLiteral("b"));
    QCOMPARE(namesIn(path()), (QStringList{QStringLiteral("a"), QStringLiteral("c")}));
}

void tst_XmlMappingWriter::removingMindsTheCase()
{
    m_writer->saveToCustom(sampleMap(QStringLiteral("Name")).get());
    m_writer->removeMap(QStringLiteral("name"));
    m_writer->removeMap(QStringLiteral("Name "));
    QCOMPARE(namesIn(path()), QStringList(QStringLiteral("Name")));
}

void tst_XmlMappingWriter::mappingsWithoutANameAreNotThoseCalledUnknown_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    const QByteArray nameless(R"(<MAPPING id="1"/>)");
    const QByteArray unknown(R"(<MAPPING id="2" software="Unknown"/>)");
    const QString called = QStringLiteral("Unknown");
    QTest::newRow("the one that is called so") << called << nameless + unknown << nameless;
    QTest::newRow("the one without a name") << QString() << unknown + nameless << unknown;
    QTest::newRow("as the reader calls it") << called << nameless << QByteArray();
}

void tst_XmlMappingWriter::mappingsWithoutANameAreNotThoseCalledUnknown()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    writeFile(path(), "<ZR>" + before + "</ZR>");
    QVERIFY(m_writer->removeMap(name));
    QByteArray content = contentOf(path());
    QCOMPARE(content.contains("id=\"1\""), after.contains("id=\"1\""));
    QCOMPARE(content.contains("id=\"2\""), after.contains("id=\"2\""));
}

void tst_XmlMappingWriter::removingAnUnknownNameRewritesTheSameContent()
{
    m_writer->saveToCustom(sampleMap(QStringLiteral("a")).get());
    m_writer->saveToCustom(sampleMap(QStringLiteral("b")).get());
    const QByteArray before = contentOf(path());
    m_writer->removeMap(QStringLiteral("c"));
    QCOMPARE(contentOf(path()), before);

    writeFile(path(), "<ZR><MAPPING software='a'/></ZR>");
    m_writer->removeMap(QStringLiteral("c")); // written anew, as the indentation tells
    QCOMPARE(contentOf(path()), QByteArray("<ZR>\n <MAPPING software=\"a\"/>\n</ZR>\n"));
}

void tst_XmlMappingWriter::removingLooksAtChildrenOfTheRootOnly()
{
    writeFile(path(), "<ZR><!-- software='a' --><GROUP><MAPPING software='a'/></GROUP></ZR>");
    m_writer->removeMap(QStringLiteral("a"));
    QCOMPARE(namesIn(path()), QStringList(QStringLiteral("a")));
    QVERIFY(contentOf(path()).contains("<!--"));
}

void tst_XmlMappingWriter::removingFromAMissingFileCreatesNone()
{
    m_writer->removeMap(QStringLiteral("a"));
    QVERIFY(!QFile::exists(path()));
    QVERIFY(m_log->take(QtWarningMsg, QStringLiteral("custom.xml")));
}

void tst_XmlMappingWriter::removingFromAMalformedFileLeavesItAlone()
{
    const QByteArray content = "<ZR><MAPPING software='a'/>";
    writeFile(path(), content);
    m_writer->removeMap(QStringLiteral("a"));
    QCOMPARE(contentOf(path()), content);
    QVERIFY(m_log->take(QtWarningMsg, QStringLiteral("custom.xml")));
}

void tst_XmlMappingWriter::removingFromAnotherRootRewritesTheFile()
{
    writeFile(path(), "<OTHER><MAPPING software='a'/></OTHER>");
    m_writer->removeMap(QStringLiteral("a"));
    QCOMPARE(contentOf(path()), QByteArray("<OTHER>\n <MAPPING software=\"a\"/>\n</OTHER>\n"));
}

void tst_XmlMappingWriter::removingIsLogged()
{
    writeFile(path(), "<ZR/>");
    m_writer->removeMap(QStringLiteral("My map"));
    QCOMPARE(m_log->takeAll(QtInfoMsg), QStringList(QStringLiteral("remove form XML: My map")));
}

void tst_XmlMappingWriter::aDocumentTooLargeToBeReadAgainIsNotWritten()
{
    const QByteArray frame("<ZR><!----></ZR>");
    QByteArray content("<ZR><!--");
    content += QByteArray(static_cast<int>(MappingFile::maximumSize) - frame.size(), 'x');
    content += "--></ZR>";
    QCOMPARE(qint64(content.size()), MappingFile::maximumSize);
    writeFile(path(), content);
    const ZRButtonMap map(QStringLiteral("one more"), nullptr);
    m_writer->saveToCustom(&map);
    QVERIFY(contentOf(path()) == content);
    QVERIFY(m_log->take(QtWarningMsg, QStringLiteral("larger than 64 MiB")));
}

QTEST_GUILESS_MAIN(tst_XmlMappingWriter)
#include "tst_XmlMappingWriter.moc"
