#include "MappingFixtures.h"
#include "mapping/ImportedMappings.h"
#include "mapping/MappingExport.h"
#include "mapping/SpecialAction.h"
#include "mapping/XmlMappingWriter.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <ctime>

class tst_ImportedMappings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void mappingsJoinTheUsers();
    void allFieldsComeAlong();
    void aTakenNameGetsTheNextFreeNumber();
    void namesOfOneFileAreToldApart();
    void aNameWithAPercentSignStaysWhatItIs();
    void manyOfOneNameAreNamedQuickly();
    void aMappingWithoutANameGetsOne();
    void whatIsWrongIsSaidWithItsPlace_data();
    void whatIsWrongIsSaidWithItsPlace();
    void nothingIsHalfImported();
    void entriesOfOtherSystemsAreNoFault();
    void theExamplesHaveNoFault();
    void aFileThatTheUsersCannotJoinIsSaid();
    void moreMappingsThanAreTakenAreRefused();
    void asManyMappingsAsAreTakenComeIn();
    void ofManyNamesAFewAreSaid();
    void aNameIsSaidInOneShortLine();

    void anExportedMappingIsTheSameOnAnotherComputer();
    void theUsersOwnIsExportedBeforeTheExample();
    void aFileIsCalledAfterItsMapping_data();
    void aFileIsCalledAfterItsMapping();

private:
    MappingFiles files() const { return MappingFiles(m_directory->path()); }
    QString file(const QByteArray &content) const
    {
        const QString path = m_directory->filePath(QStringLiteral("from elsewhere.xml"));
        writeFile(path, content);
        return path;
    }
    QStringList own() const
    {
        QStringList names;
        for (const auto &map : mapsOf(files().custom())) {
            names.append(map->name);
        }
        return names;
    }

    std::unique_ptr<QTemporaryDir> m_directory;
};

namespace
{

QByteArray named(const QByteArray &name)
{
    return "<MAPPING software=\"" + name + "\"/>";
}

QByteArray library(const QByteArray &mappings)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ZR>\n" + mappings + "\n</ZR>\n";
}

} // namespace

void tst_ImportedMappings::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
}

void tst_ImportedMappings::mappingsJoinTheUsers()
{
    XmlMappingWriter(m_directory->path()).saveToCustom(sampleMap(QStringLiteral("Mine")).get());
    const auto outcome = ImportedMappings::import(file(library(named("One") + named("Two"))), files());
    QCOMPARE(outcome.names, QStringList({QStringLiteral("One"), QStringLiteral("Two")}));
    QCOMPARE(outcome.sentence, QStringLiteral("Imported: One, Two"));
    QCOMPARE(own(), QStringList({QStringLiteral("Mine"), QStringLiteral("One"), QStringLiteral("Two")}));
}

void tst_ImportedMappings::allFieldsComeAlong()
{
    const auto sample = sampleMap(QStringLiteral("All"));
    sample->actions[3][Layer::Shift1].key1 = MIDI_KNOB_ACTION;
    sample->actions[3][Layer::Shift1].key2 = -1;
    sample->actions[3][Layer::Shift1].key3 = -1;
    sample->actions[3][Layer::Shift1].channel = 5;
    sample->actions[3][Layer::Shift1].knobcc = 20;
    sample->actions[3][Layer::Shift1].m0_127 = true;
    const ImportedMappings read(file(XmlMappingWriter::fileOf(*sample)));
    QCOMPARE(read.fault(), QString());
    QCOMPARE(read.maps().size(), std::size_t(1));
    for (int control = 0; control < ActionTable::controlCount; ++control) {
        for (const Layer layer : Layers::all) {
            const shortCut &expected = sample->actions[control][layer];
            shortCut entry = asReadBack(expected);
            if (isMidi(expected)) {
                entry.knobcc = expected.knobcc;
                entry.m01h = expected.m01h;
                entry.m3fh = expected.m3fh;
                entry.m0_127 = expected.m0_127;
            }
            QVERIFY(read.maps().front()->actions[control][layer] == entry);
        }
    }
}

void tst_ImportedMappings::aTakenNameGetsTheNextFreeNumber()
{
    const QString path = file(library(named("Mix")));
    for (const char *expected : {"Mix", "Mix (2)", "Mix (3)"}) {
        const auto outcome = ImportedMappings::import(path, files());
        QCOMPARE(outcome.names, QStringList(QLatin1String(expected)));
        QCOMPARE(outcome.sentence,
                 QString::fromUtf8("\u201c%1\u201d was imported.").arg(QLatin1String(expected)));
    }
    QCOMPARE(own().size(), 3);
}

void tst_ImportedMappings::namesOfOneFileAreToldApart()
{
    writeFile(files().custom(), library(named("Mix (2)")));
    const auto outcome =
        ImportedMappings::import(file(library(named("Mix") + named("Mix") + named("Mix"))), files());
    QCOMPARE(outcome.names,
             QStringList({QStringLiteral("Mix"), QStringLiteral("Mix (3)"), QStringLiteral("Mix (4)")}));
}

void tst_ImportedMappings::aNameWithAPercentSignStaysWhatItIs()
{
    const QString path = file(library(named("Vol %1")));
    ImportedMappings::import(path, files());
    QCOMPARE(ImportedMappings::import(path, files()).names, QStringList(QStringLiteral("Vol %1 (2)")));
    // As that of a file.
    const QString out = m_directory->filePath(QStringLiteral("%1 of %2.xml"));
    QVERIFY(MappingExport::write(*MappingExport::find(QStringLiteral("Vol %1"), files()), out));
    QVERIFY(ImportedMappings(out).fault().isEmpty());
}

void tst_ImportedMappings::manyOfOneNameAreNamedQuickly()
{
    constexpr double most = 2; // seconds of the processor's, whatever else runs
    constexpr int count = 10000;
    QByteArray many;
    for (int i = 0; i < count; ++i) {
        many += named("Mix");
    }
    ImportedMappings read(file(library(many)), count);
    const std::clock_t begin = std::clock();
    const QStringList names = read.chooseNames(files());
    const double seconds = double(std::clock() - begin) / CLOCKS_PER_SEC;
    QCOMPARE(names.size(), count);
    QCOMPARE(names.constLast(), QStringLiteral("Mix (10000)"));
    QVERIFY2(seconds < most, qPrintable(QString::number(seconds)));
}

void tst_ImportedMappings::aMappingWithoutANameGetsOne()
{
    const auto outcome = ImportedMappings::import(file(library("<MAPPING/>")), files());
    QCOMPARE(outcome.names, QStringList(QStringLiteral("Unknown")));
}

void tst_ImportedMappings::whatIsWrongIsSaidWithItsPlace_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("fault");

    const auto entry = [](const QByteArray &layer) {
        return library("<MAPPING software=\"Mix\">\n<BUTTON id=\"2\">\n" + layer + "\n</BUTTON>\n</MAPPING>");
    };
    const auto row = [](const char *name, const QByteArray &content, const char *fault) {
        QTest::newRow(name) << content << QString::fromUtf8(fault);
    };
    const QString place = QString::fromUtf8("line 5, \u201cMix\u201d, button 2, Shift 1: ");
    const auto keyRow = [&](const char *name, const QByteArray &key, const char *fault) {
        QTest::newRow(name) << entry("<SHIFT1 label=\"\">" + key + "</SHIFT1>")
                            << place + QString::fromUtf8(fault);
    };
    row("no mapping", library(""), "it holds no mapping");
    row("a page of the web", "<html><body>Not found</body></html>", "it holds no mapping");
    keyRow("a key that is no number", "<KEY1 type=\"int\">F5</KEY1>", "\u201cF5\u201d is no number");
    keyRow("a key that is too large", "<KEY3 type=\"hex\">FFFFFFFFF</KEY3>",
           "\u201cFFFFFFFFF\u201d is no number");
    keyRow("a key of no type", "<KEY2>Ctrl</KEY2>", "\u201cCtrl\u201d is no single character");
    keyRow("a type that there is not", "<KEY1 type=\"specail\">vertical</KEY1>",
           "\u201cvertical\u201d is no single character");
    keyRow("an action that there is not", "<KEY1 type=\"special\">diagonal</KEY1>",
           "\u201cdiagonal\u201d is no action");
    keyRow("MIDI that is no number", "<KEY1 type=\"midi\" channel=\"1\" cc=\"x\"/>",
           "\u201cx\u201d is no number");
    keyRow("a text that is far too long",
           "<KEY1 type=\"int\">0123456789012345678901234567890123456789</KEY1>",
           "\u201c012345678901234567890123456789\u2026\u201d is no number");
    keyRow("a text that is as long as is quoted", "<KEY1 type=\"int\">01234567890123456789012345678x</KEY1>",
           "\u201c01234567890123456789012345678x\u201d is no number");
    row("a key behind elements that mean nothing",
        entry("<SHIFT1 label=\"\"><KEY1 type=\"int\">1<odd>\n<odder/></odd></KEY1>\n"
              "<KEY2 type=\"int\">F5</KEY2></SHIFT1>"),
        "line 7, \u201cMix\u201d, button 2, Shift 1: \u201cF5\u201d is no number");
    row("a layer that there is not", entry("<SHIFT3/>"),
        "line 5, \u201cMix\u201d, button 2: SHIFT3 is no layer");
    row("a button that there is not", library("<MAPPING software=\"Mix\">\n\n<BUTTON id=\"10\"/></MAPPING>"),
        "line 5, \u201cMix\u201d: \u201c10\u201d is no number of a control, which are 0 to 9");
    row("a mapping of nobody among those of programs",
        library("<MAPPING program=\"gimp\"/><MAPPING software=\"Mix\"/>"),
        "it does not give each mapping a program of its own");
    row("one of a program where none is looked for",
        library("<MAPPING program=\"gimp\"/><OLD><MAPPING program=\"blender\"/></OLD>"),
        "it does not give each mapping a program of its own");
    row("two of one program", library("<MAPPING program=\"gimp\"/><MAPPING program=\"gimp\"/>"),
        "it does not give each mapping a program of its own");
    row("a mapping in a mapping", library("<MAPPING software=\"Mix\"><MAPPING/></MAPPING>"),
        "line 3, \u201cMix\u201d: \u201c\u201d is no number of a control, which are 0 to 9");
}

void tst_ImportedMappings::whatIsWrongIsSaidWithItsPlace()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, fault);
    const auto outcome = ImportedMappings::import(file(content), files());
    QCOMPARE(outcome.names, QStringList());
    QCOMPARE(outcome.sentence,
             QString::fromUtf8("\u201cfrom elsewhere.xml\u201d was not imported: %1.").arg(fault));
    QVERIFY(!QFile::exists(files().custom()));
    QVERIFY(!QFile::exists(files().programs()));
}

void tst_ImportedMappings::nothingIsHalfImported()
{
    const QByteArray before = library(named("Mine"));
    writeFile(files().custom(), before);
    for (const QByteArray &content :
         {library(named("Good") + "<MAPPING><BUTTON id=\"x\"/></MAPPING>"), library(named("Good")).chopped(5),
          QByteArray(), QByteArray("\x89PNG\r\n\x1A\n\0\0", 10)}) {
        const auto outcome = ImportedMappings::import(file(content), files());
        QVERIFY(outcome.names.isEmpty());
        QVERIFY2(outcome.sentence.endsWith(QLatin1Char('.')), qPrintable(outcome.sentence));
        QCOMPARE(contentOf(files().custom()), before);
    }
    // A break in the file is said with its line.
    const auto outcome = ImportedMappings::import(file(library(named("Good")).chopped(5)), files());
    QVERIFY2(outcome.sentence.contains(QLatin1String(" line 4")), qPrintable(outcome.sentence));
    const auto none = ImportedMappings::import(m_directory->filePath(QStringLiteral("none.xml")), files());
    QCOMPARE(none.sentence,
             QString::fromUtf8("\u201cnone.xml\u201d was not imported: there is no such file."));
    const auto folder = ImportedMappings::import(m_directory->path(), files());
    QVERIFY(folder.names.isEmpty());
}

void tst_ImportedMappings::entriesOfOtherSystemsAreNoFault()
{
    const auto outcome = ImportedMappings::import(
        file(library(
            "<MAPPING software=\"Mix\"><!-- a remark --><BUTTON id=\"0\"><NORMAL os=\"mac\" label=\"\">"
            "<KEY1 type=\"int\">command</KEY1></NORMAL><NORMAL label=\"A\"><KEY1>A</KEY1></NORMAL>"
            "</BUTTON></MAPPING>")),
        files());
    QCOMPARE(outcome.names, QStringList(QStringLiteral("Mix")));
    QCOMPARE(mapsOf(files().custom()).front()->actions[0][Layer::Normal].key1, qint32('A'));
}

void tst_ImportedMappings::theExamplesHaveNoFault()
{
    const QString examples = QStringLiteral(SEED_LIBRARY);
    const auto expected = mapsOf(examples);
    const auto outcome = ImportedMappings::import(examples, files());
    QVERIFY2(!outcome.names.isEmpty(), qPrintable(outcome.sentence));
    const auto imported = mapsOf(files().custom());
    QCOMPARE(imported.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        QCOMPARE(imported[i]->name, expected[i]->name);
        QVERIFY(imported[i]->actions == expected[i]->actions);
    }
}

void tst_ImportedMappings::aFileThatTheUsersCannotJoinIsSaid()
{
    const QByteArray before("this is no mapping file");
    writeFile(files().custom(), before);
    LogCapture log;
    const auto outcome = ImportedMappings::import(file(library(named("Mix"))), files());
    QVERIFY(outcome.names.isEmpty());
    QCOMPARE(outcome.sentence,
             QString::fromUtf8("\u201cfrom elsewhere.xml\u201d was not imported. Your mappings "
                               "(custom.xml) cannot be added to: it is no mapping file; a "
                               "copy of it lies beside it."));
    QVERIFY(contentOf(files().custom()).startsWith(before));
    // Nor are those of programs taken for the imported file's.
    QVERIFY(QDir().mkdir(files().programs()));
    QCOMPARE(ImportedMappings::import(file(library("<MAPPING program=\"gimp\"/>")), files()).sentence,
             QString::fromUtf8(
                 "\u201cfrom elsewhere.xml\u201d was not imported. Your mappings (programs.xml) cannot be "
                 "added to: not a regular file."));
}

void tst_ImportedMappings::moreMappingsThanAreTakenAreRefused()
{
    QByteArray many;
    for (int i = 0; i <= ImportedMappings::mostMappings; ++i) {
        many += "<MAPPING/>";
    }
    const auto outcome = ImportedMappings::import(file(library(many)), files());
    QCOMPARE(outcome.sentence, QString::fromUtf8("\u201cfrom elsewhere.xml\u201d was not imported: it holds "
                                                 "more than 500 mappings."));
    QVERIFY(!QFile::exists(files().custom()));
}

void tst_ImportedMappings::asManyMappingsAsAreTakenComeIn()
{
    QByteArray many;
    for (int i = 1; i <= ImportedMappings::mostMappings; ++i) {
        many += named("M" + QByteArray::number(i));
    }
    LogCapture log;
    const auto outcome = ImportedMappings::import(file(library(many)), files());
    QCOMPARE(outcome.names.size(), 500);
    QCOMPARE(own().size(), 500);
    QVERIFY2(log.lines().contains(QStringLiteral("Save to XML: M1, M2, M3, M4, M5 and 495 more")),
             qPrintable(log.lines().join(QLatin1Char('\n'))));
}

void tst_ImportedMappings::ofManyNamesAFewAreSaid()
{
    QByteArray some;
    for (int i = 1; i <= 5; ++i) {
        some += named("M" + QByteArray::number(i));
    }
    QCOMPARE(ImportedMappings::import(file(library(some)), files()).sentence,
             QStringLiteral("Imported: M1, M2, M3, M4, M5"));
    QByteArray many;
    for (int i = 1; i <= 100; ++i) {
        many += named("N" + QByteArray::number(i));
    }
    const auto outcome = ImportedMappings::import(file(library(many)), files());
    QCOMPARE(outcome.names.size(), 100);
    QCOMPARE(outcome.sentence, QString::fromUtf8("Imported: N1, N2, N3, N4, N5, \u2026 and 95 more"));
}

void tst_ImportedMappings::aNameIsSaidInOneShortLine()
{
    const QByteArray fits(60, 'x');
    QCOMPARE(ImportedMappings::import(file(library(named(fits))), files()).sentence,
             QString::fromUtf8("\u201c%1\u201d was imported.").arg(QLatin1String(fits)));
    QCOMPARE(ImportedMappings::import(file(library(named(fits + 'x'))), files()).sentence,
             QString::fromUtf8("\u201c%1\u2026\u201d was imported.").arg(QLatin1String(fits)));
    const auto outcome = ImportedMappings::import(
        file(library(named("a&#10;b&#10;" + QByteArray("\xF0\x9F\x98\x80").repeated(1000)))), files());
    QCOMPARE(outcome.names.constFirst().size(), 2004); // the mapping's own name stays whole
    QCOMPARE(outcome.sentence, QString::fromUtf8("\u201ca b %1\u2026\u201d was imported.")
                                   .arg(QString::fromUtf8("\U0001F600").repeated(28)));
}

void tst_ImportedMappings::anExportedMappingIsTheSameOnAnotherComputer()
{
    const auto sample = sampleMap(QString::fromUtf8("M\u00fcller's \"Mix\" & <more>"));
    sample->actions[1][Layer::Normal] = {};
    sample->actions[1][Layer::Normal].key1 = MIDI_KNOB_ACTION;
    sample->actions[1][Layer::Normal].channel = 1;
    sample->actions[1][Layer::Normal].knobcc = 77;
    sample->actions[1][Layer::Normal].m3fh = true;
    XmlMappingWriter(m_directory->path()).saveToCustom(sample.get());
    QByteArray first;
    // The order of a document's attributes follows the hash, which differs from computer to computer.
    for (const int seed : {0, 1, 20240229}) {
        qSetGlobalQHashSeed(seed == 0 ? 0 : -1);
        const QTemporaryDir other;
        const QString out = other.filePath(QStringLiteral("out.xml"));
        const QString again = other.filePath(QStringLiteral("again.xml"));
        const auto found = MappingExport::find(sample->name, files());
        QVERIFY(found);
        QVERIFY(MappingExport::write(*found, out));
        const MappingFiles others(other.path());
        QCOMPARE(ImportedMappings::import(out, others).names, QStringList(sample->name));
        const auto foundThere = MappingExport::find(sample->name, others);
        QVERIFY(foundThere);
        QVERIFY(MappingExport::write(*foundThere, again));
        QCOMPARE(contentOf(again), contentOf(out));
        first = first.isEmpty() ? contentOf(out) : first;
        QCOMPARE(contentOf(out), first);
        QCOMPARE(foundThere->actions[1][Layer::Normal].knobcc, 77);
    }
    QVERIFY(first.startsWith("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n<ZR>\n"
                             " <MAPPING software="));
    QVERIFY(first.contains("\n  <BUTTON id=\"0\">\n"));
    QVERIFY(!first.contains("></KEY1>")); // one tag is enough for what holds nothing
}

void tst_ImportedMappings::theUsersOwnIsExportedBeforeTheExample()
{
    const auto entry = [](const QByteArray &name, const QByteArray &label) {
        return "<MAPPING software=\"" + name + "\"><BUTTON id=\"0\"><NORMAL label=\"" + label +
               "\"/></BUTTON></MAPPING>";
    };
    writeFile(files().library(), library(entry("Mix", "example") + entry("Only", "example")));
    writeFile(files().custom(), library(entry("Mix", "first") + entry("Mix", "second")));
    const auto label = [this](const char *name) {
        const auto map = MappingExport::find(QLatin1String(name), files());
        return map ? map->actions[0][Layer::Normal].label : QStringLiteral("none");
    };
    QCOMPARE(label("Mix"), QStringLiteral("first"));
    QCOMPARE(label("Only"), QStringLiteral("example"));
    QCOMPARE(label("mix"), QStringLiteral("none"));
}

void tst_ImportedMappings::aFileIsCalledAfterItsMapping_data()
{
    QTest::addColumn<QString>("mapping");
    QTest::addColumn<QString>("file");

    QTest::newRow("plain") << QStringLiteral("My Mix (2)") << QStringLiteral("My Mix (2).xml");
    QTest::newRow("strokes") << QStringLiteral("a/b\\c:d") << QStringLiteral("a_b_c_d.xml");
    QTest::newRow("up") << QStringLiteral("../../etc/passwd") << QStringLiteral("__.._etc_passwd.xml");
    QTest::newRow("dots") << QStringLiteral("...") << QStringLiteral("_.xml");
    QTest::newRow("nothing") << QString() << QStringLiteral("mapping.xml");
    for (const char *device : {"CON", "Con", "prn", "AUX", "NUL", "COM1", "lpt9", "COM0", "CONIN$"}) {
        QTest::newRow(device) << QLatin1String(device) + QString()
                              << QLatin1String(device) + QStringLiteral("_.xml");
    }
    QTest::newRow("a device with an ending") << QStringLiteral("aux.old") << QStringLiteral("aux_.old.xml");
    QTest::newRow("a device with a blank") << QStringLiteral("nul .x") << QStringLiteral("nul_ .x.xml");
    QTest::newRow("no device") << QStringLiteral("Console 1") << QStringLiteral("Console 1.xml");
    QTest::newRow("no device either") << QStringLiteral("COM10") << QStringLiteral("COM10.xml");
    QTest::newRow("lines") << QStringLiteral(" a\nb ") << QStringLiteral("a b.xml");
    QTest::newRow("long") << QString(200, QLatin1Char('x'))
                          << QString(60, QLatin1Char('x')) + QStringLiteral(".xml");
    const QString face = QString::fromUtf8("\U0001F600");
    QTest::newRow("not cut within a character")
        << QLatin1Char('x') + face.repeated(40)
        << QLatin1Char('x') + face.repeated(29) + QStringLiteral(".xml");
}

void tst_ImportedMappings::aFileIsCalledAfterItsMapping()
{
    QFETCH(QString, mapping);
    QFETCH(QString, file);
    QCOMPARE(MappingExport::fileName(mapping), file);
}

QTEST_GUILESS_MAIN(tst_ImportedMappings)
#include "tst_ImportedMappings.moc"
