// Each document that is not as it should be has a file of its own in tests/data/mappings and a line here with
// what reader, writer and remover make of it.

#include "MappingFixtures.h"
#include "mapping/MappingDocument.h"
#include "mapping/MappingFile.h"
#include "mapping/XmlMappingReader.h"
#include "mapping/XmlMappingWriter.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"
#include "tests/support/random/Seeds.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace
{

enum class Saving {
    SeedAppended, // does not parse: an empty document is appended as text, the mapping is lost
    Untouched,    // refused
    Fresh,        // as good as empty: the mapping is saved
};

QString dataFolder(const char *folder)
{
    return QStringLiteral(VELTRIX_TEST_DATA "/mappings/") + QLatin1String(folder);
}

} // namespace

Q_DECLARE_METATYPE(Saving)

class tst_MalformedMappings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void everyBadFileHasARow();
    void badFiles_data();
    void badFilesAreNotReadAndTheLogSaysWhy_data() { badFiles_data(); }
    void badFilesAreNotReadAndTheLogSaysWhy();
    void savingIntoBadFilesLosesNothing_data() { badFiles_data(); }
    void savingIntoBadFilesLosesNothing();
    void savingAloneReplacesMalformedFiles_data() { badFiles_data(); }
    void savingAloneReplacesMalformedFiles();
    void removingFromBadFilesLeavesThemAlone_data() { badFiles_data(); }
    void removingFromBadFilesLeavesThemAlone();

    void everyGoodFileHasARow();
    void oddFilesThatAreFineAreRead_data();
    void oddFilesThatAreFineAreRead();

    void nestingWithoutEndDoesNotOverflowTheStack_data();
    void nestingWithoutEndDoesNotOverflowTheStack();
    void tooManyPartsAreRefused_data();
    void tooManyPartsAreRefused();
    void theLargestLibraryIsNotRefused();
    void aFileAboveTheSizeLimitIsLeftToItself();
    void whatIsNoFileIsLeftToItself();
    void randomDamageNeverEndsTheProgram_data() { addSeeds({20240229}); }
    void randomDamageNeverEndsTheProgram();

private:
    QString custom() const { return m_directory->filePath(QStringLiteral("custom.xml")); }
    int listsReadFrom(const QString &path);

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<LogCapture> m_log;
};

void tst_MalformedMappings::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_log = std::make_unique<LogCapture>();
}

void tst_MalformedMappings::cleanup()
{
    QCOMPARE(m_log->warnings(), QStringList());
    m_log.reset();
}

// How many signals reading the file as a list and as a single map emits.
int tst_MalformedMappings::listsReadFrom(const QString &path)
{
    int signalled = 0;
    XmlMappingReader reader;
    connect(&reader, &XmlMappingReader::newMapListReady, this,
            [&signalled](const QList<ZRButtonMap *> &maps) {
                ++signalled;
                qDeleteAll(maps);
            });
    connect(&reader, &XmlMappingReader::onCurrentMapLoaded, this, [&signalled](ZRButtonMap *map) {
        ++signalled;
        delete map;
    });
    reader.readMapList(path, true);
    reader.readCurrentMap(path);
    return signalled;
}

void tst_MalformedMappings::badFiles_data()
{
    QTest::addColumn<Saving>("saving");
    QTest::addColumn<QString>("reason"); // a part of the line in the log
    const auto row = [](const char *name, Saving saving, const char *reason) {
        QTest::newRow(name) << saving << QString::fromLatin1(reason);
    };
    row("attribute-default", Saving::Untouched, "document type declarations");
    row("bare-ampersand", Saving::SeedAppended, "line 1");
    row("binary", Saving::SeedAppended, "not encoded in UTF-8");
    row("blank", Saving::SeedAppended, "unexpected end of file");
    row("comment-only", Saving::SeedAppended, "unexpected end of file");
    row("control-character", Saving::SeedAppended, "U+0001");
    row("crossed-tags", Saving::SeedAppended, "tag mismatch");
    row("cut-utf8", Saving::SeedAppended, "not encoded in UTF-8");
    row("declaration-only", Saving::SeedAppended, "unexpected end of file");
    row("empty", Saving::Fresh, "unexpected end of file");
    row("entity", Saving::Untouched, "document type declarations");
    row("entity-bomb", Saving::Untouched, "document type declarations");
    row("external-entity", Saving::Untouched, "document type declarations");
    row("html", Saving::SeedAppended, "tag mismatch");
    row("json", Saving::SeedAppended, "line 1");
    row("latin1-undeclared", Saving::SeedAppended, "not encoded in UTF-8");
    row("nested-257", Saving::Untouched, "nested deeper than 256 levels");
    row("nested-unclosed", Saving::Untouched, "nested deeper than 256 levels");
    row("noncharacter", Saving::SeedAppended, "U+fffe");
    row("nul-byte", Saving::SeedAppended, "U+0000");
    row("nul-bytes-only", Saving::SeedAppended, "U+0000");
    row("plain-text", Saving::SeedAppended, "line 1");
    row("surrogate-in-utf8", Saving::SeedAppended, "not encoded in UTF-8");
    row("text-before-declaration", Saving::SeedAppended, "line 2");
    row("text-behind-root", Saving::SeedAppended, "Extra content");
    row("truncated", Saving::SeedAppended, "unexpected end of file");
    row("two-roots", Saving::SeedAppended, "Extra content");
    row("unclosed-root", Saving::SeedAppended, "unexpected end of file");
    row("unknown-encoding", Saving::SeedAppended, "encoding is not known");
    row("unquoted-attribute", Saving::SeedAppended, "line 1");
    row("unterminated-attribute", Saving::SeedAppended, "line 1");
    row("unterminated-cdata", Saving::SeedAppended, "unexpected end of file");
    row("unterminated-comment", Saving::SeedAppended, "unexpected end of file");
    row("utf16-declared-but-not", Saving::SeedAppended, "line 1");
    row("utf16-odd-length", Saving::SeedAppended, "not encoded in UTF-16");
}

void tst_MalformedMappings::everyBadFileHasARow()
{
    const QStringList files = QDir(dataFolder("bad")).entryList(QDir::Files);
    QCOMPARE(files.size(), 35);
}

void tst_MalformedMappings::badFilesAreNotReadAndTheLogSaysWhy()
{
    QFETCH(QString, reason);
    const QString path = dataFolder("bad/") + QLatin1String(QTest::currentDataTag()) + QStringLiteral(".xml");
    QCOMPARE(listsReadFrom(path), 0);
    const QStringList lines = m_log->takeAll(QtWarningMsg);
    QCOMPARE(lines.size(), 2);
    for (const QString &line : lines) {
        QVERIFY2(line.contains(path) && line.contains(reason), qPrintable(line));
    }
}

void tst_MalformedMappings::savingIntoBadFilesLosesNothing()
{
    QFETCH(Saving, saving);
    const QByteArray before =
        contentOf(dataFolder("bad/") + QLatin1String(QTest::currentDataTag()) + QStringLiteral(".xml"));
    writeFile(custom(), before);
    XmlMappingWriter(m_directory->path()).saveToCustom(sampleMap(QStringLiteral("mine")).get());
    const QByteArray after = contentOf(custom());
    switch (saving) {
    case Saving::SeedAppended:
        QCOMPARE(after, before + emptyDocument());
        QVERIFY(m_log->take(QtWarningMsg, QStringLiteral("The mapping mine was not saved")));
        break;
    case Saving::Untouched:
        QCOMPARE(after, before);
        QVERIFY(m_log->take(QtWarningMsg, QStringLiteral("was left as it is")));
        break;
    case Saving::Fresh:
        QCOMPARE(mapsOf(custom()).size(), std::size_t(1));
        QVERIFY(m_log->take(QtInfoMsg, QStringLiteral("custom XML created")));
        break;
    }
}

void tst_MalformedMappings::savingAloneReplacesMalformedFiles()
{
    writeFile(custom(), contentOf(dataFolder("bad/") + QLatin1String(QTest::currentDataTag()) +
                                  QStringLiteral(".xml")));
    XmlMappingWriter(m_directory->path())
        .saveMap(sampleMap(QStringLiteral("mine")).get(), QStringLiteral("/custom.xml"), true);
    const auto maps = mapsOf(custom());
    QCOMPARE(maps.size(), std::size_t(1));
    QCOMPARE(maps.front()->name, QStringLiteral("mine"));
}

void tst_MalformedMappings::removingFromBadFilesLeavesThemAlone()
{
    const QByteArray before =
        contentOf(dataFolder("bad/") + QLatin1String(QTest::currentDataTag()) + QStringLiteral(".xml"));
    writeFile(custom(), before);
    XmlMappingWriter(m_directory->path()).removeMap(QStringLiteral("One"));
    QCOMPARE(contentOf(custom()), before);
    QVERIFY(m_log->take(QtWarningMsg, QStringLiteral("was left as it is")));
}

void tst_MalformedMappings::everyGoodFileHasARow()
{
    QCOMPARE(QDir(dataFolder("good")).entryList(QDir::Files).size(), 13);
}

void tst_MalformedMappings::oddFilesThatAreFineAreRead_data()
{
    QTest::addColumn<QString>("name"); // of the one mapping; empty: there is none
    QTest::newRow("comments-hide-tags") << "One";
    QTest::newRow("doctype") << "One";
    QTest::newRow("emoji") << QString::fromUtf8("\xF0\x9F\x98\x80 One");
    QTest::newRow("latin1-declared") << QString::fromUtf8("R\xC3\xBC"
                                                          "ckg\xC3\xA4ngig");
    QTest::newRow("nested-256") << "Deep";
    QTest::newRow("no-declaration") << "One";
    QTest::newRow("no-mapping") << "";
    QTest::newRow("other-root") << "One";
    QTest::newRow("utf16-big-endian-bom") << QString::fromUtf8("\xE2\x86\x90 One");
    QTest::newRow("utf16-bom") << QString::fromUtf8("\xE2\x86\x90 One");
    QTest::newRow("utf16-without-bom") << QString::fromUtf8("\xE2\x86\x90 One");
    QTest::newRow("utf8-bom") << QString::fromUtf8("\xE2\x86\x90 One");
    QTest::newRow("windows-line-ends") << "One";
}

void tst_MalformedMappings::oddFilesThatAreFineAreRead()
{
    QFETCH(QString, name);
    const QString path =
        dataFolder("good/") + QLatin1String(QTest::currentDataTag()) + QStringLiteral(".xml");
    const auto maps = mapsOf(path);
    QCOMPARE(maps.size(), name.isEmpty() ? std::size_t(0) : std::size_t(1));
    if (!maps.empty()) {
        QCOMPARE(maps.front()->name, name);
    }
    // Writing the document anew changes neither the mapping nor that it parses.
    writeFile(custom(), contentOf(path));
    XmlMappingWriter(m_directory->path()).removeMap(QStringLiteral("not there"));
    const auto again = mapsOf(custom());
    QCOMPARE(again.size(), maps.size());
    for (std::size_t i = 0; i < maps.size(); ++i) {
        QCOMPARE(again[i]->name, maps[i]->name);
        QVERIFY(again[i]->actions[0][Layer::Normal] == maps[i]->actions[0][Layer::Normal]);
    }
}

void tst_MalformedMappings::nestingWithoutEndDoesNotOverflowTheStack_data()
{
    QTest::addColumn<QByteArray>("xml");
    const QByteArray open = QByteArray("<a>").repeated(1000000);
    const QByteArray close = QByteArray("</a>").repeated(1000000);
    QTest::newRow("closed") << open + close;
    QTest::newRow("never closed") << open;
    QTest::newRow("behind a comment that closes") << "<!-- " + close + " -->" + open;
    QTest::newRow("between sections that close")
        << "<ZR>" + QByteArray("<a><![CDATA[</a></a>]]>").repeated(500000);
    QTest::newRow("between instructions that close")
        << "<ZR>" + QByteArray("<a><?x </a></a>?>").repeated(500000);
    QTest::newRow("attributes that look closed") << QByteArray("<a x='/>' y=\"</a>\">").repeated(500000);
    QTest::newRow("behind too many ends") << "<a/>" + close + open;
}

void tst_MalformedMappings::nestingWithoutEndDoesNotOverflowTheStack()
{
    QFETCH(QByteArray, xml);
    writeFile(custom(), xml);
    QCOMPARE(listsReadFrom(custom()), 0);
    XmlMappingWriter(m_directory->path()).removeMap(QStringLiteral("a"));
    QVERIFY(contentOf(custom()) == xml);
    QCOMPARE(m_log->takeAll(QtWarningMsg).size(), 3);
}

void tst_MalformedMappings::tooManyPartsAreRefused_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("reason");
    const int many = static_cast<int>(MappingDocument::maximumParts);
    QTest::newRow("elements") << "<ZR>" + QByteArray("<a/>").repeated(many) + "</ZR>"
                              << "more than 8000000 tags";
    QTest::newRow("attributes of many")
        << "<ZR>" + QByteArray("<a a='' b='' c='' d='' e='' f='' g=''/>").repeated(many / 8) + "</ZR>"
        << "more than 8000000 tags and attributes";
    QTest::newRow("attributes of one") << "<ZR" + QByteArray(" a=''").repeated(many) + "/>"
                                       << "a tag of more than 16384 attributes";
}

void tst_MalformedMappings::tooManyPartsAreRefused()
{
    QFETCH(QByteArray, xml);
    QFETCH(QString, reason);
    writeFile(custom(), xml);
    QCOMPARE(listsReadFrom(custom()), 0);
    const QStringList lines = m_log->takeAll(QtWarningMsg);
    QCOMPARE(lines.size(), 2); // as a list and as a single map
    QVERIFY2(lines.first().endsWith(reason),
             qPrintable(lines.first())); // tags alone are told before any is built
}

void tst_MalformedMappings::aFileAboveTheSizeLimitIsLeftToItself()
{
    QFile file(custom());
    QVERIFY(file.open(QIODevice::ReadWrite));
    file.write("<ZR/>");
    constexpr qint64 size = qint64{100} * 1024 * 1024;
    QVERIFY(file.resize(size));
    QCOMPARE(listsReadFrom(custom()), 0);
    XmlMappingWriter writer(m_directory->path());
    writer.saveToCustom(sampleMap(QStringLiteral("a")).get());
    writer.saveMap(sampleMap(QStringLiteral("a")).get(), QStringLiteral("/custom.xml"), true);
    writer.removeMap(QStringLiteral("a"));
    QCOMPARE(QFileInfo(custom()).size(), size);
    QVERIFY(file.seek(0));
    QCOMPARE(file.read(5), QByteArray("<ZR/>"));
    const QStringList lines = m_log->takeAll(QtWarningMsg);
    QCOMPARE(lines.size(), 5);
    for (const QString &line : lines) {
        QVERIFY2(line.contains(QStringLiteral("larger than 64 MiB")), qPrintable(line));
    }
}

void tst_MalformedMappings::whatIsNoFileIsLeftToItself()
{
    QVERIFY(QDir().mkdir(custom()));
    QCOMPARE(listsReadFrom(custom()), 0);
    XmlMappingWriter writer(m_directory->path());
    writer.saveToCustom(sampleMap(QStringLiteral("a")).get());
    writer.saveMap(sampleMap(QStringLiteral("a")).get(), QStringLiteral("/custom.xml"), true);
    writer.removeMap(QStringLiteral("a"));
    QVERIFY(QFileInfo(custom()).isDir());
    QCOMPARE(m_log->takeAll(QtWarningMsg).size(), 5);
}

void tst_MalformedMappings::theLargestLibraryIsNotRefused()
{
    const QByteArray golden = contentOf(dataFolder("golden/current.xml"));
    const int begin = golden.indexOf(" <MAPPING");
    const int end = golden.indexOf("</ZR>");
    const QByteArray mapping = golden.mid(begin, end - begin);
    const int room = static_cast<int>(MappingFile::maximumSize) - golden.size();
    const QByteArray xml = golden.left(end) + mapping.repeated(room / mapping.size()) + "</ZR>\n";
    QVERIFY(xml.size() <= MappingFile::maximumSize);
    const int parts = xml.count('<') + xml.count('"') / 2;
    QVERIFY2(parts < MappingDocument::maximumParts, qPrintable(QString::number(parts)));
}

// Changed, dropped and doubled bytes: whatever comes out, nothing crashes, and what is read is written and
// read again.
void tst_MalformedMappings::randomDamageNeverEndsTheProgram()
{
    QFETCH(quint32, seed);
    const QByteArray whole = contentOf(dataFolder("golden/current.xml"));
    quint32 state = seed;
    const auto random = [&state](int below) {
        state = state * 1664525U + 1013904223U;
        return static_cast<int>((state >> 8U) % static_cast<quint32>(below));
    };
    int readable = 0;
    for (int round = 0; round < 300; ++round) {
        QByteArray damaged = whole;
        for (int change = random(2); change >= 0; --change) {
            const int at = random(damaged.size() - 40);
            switch (random(8)) {
            case 0:
                damaged[at] = static_cast<char>(random(256));
                break;
            case 1:
                damaged.remove(at, 1 + random(30));
                break;
            case 2:
                damaged.insert(at, damaged.mid(random(damaged.size() - 40), 1 + random(30)));
                break;
            default:
                damaged[at] = static_cast<char>(' ' + random('~' - ' '));
                break;
            }
        }
        writeFile(custom(), damaged);
        const auto maps = mapsOf(custom());
        if (maps.empty()) {
            continue;
        }
        ++readable;
        XmlMappingWriter(m_directory->path()).removeMap(QStringLiteral("not there"));
        const auto again = mapsOf(custom());
        QCOMPARE(again.size(), maps.size());
        for (std::size_t i = 0; i < maps.size(); ++i) {
            QCOMPARE(again[i]->name, maps[i]->name);
        }
    }
    QVERIFY(readable > 30 && readable < 270);
    m_log->takeAll(QtWarningMsg);
}

QTEST_GUILESS_MAIN(tst_MalformedMappings)
#include "tst_MalformedMappings.moc"
