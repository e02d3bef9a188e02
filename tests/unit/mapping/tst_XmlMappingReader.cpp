#include "ReaderInFolder.h"
#include "tests/support/main/Main.h"

#include <QLoggingCategory>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

/// The mappings of a file, in the file's order, the one to begin with, and what is said of it all.
class tst_XmlMappingReader : public QObject, private ReaderInFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void cleanup() { end(); }

    void everyMappingIsReadInDocumentOrder();
    void mappingsAreFoundAtAnyDepthBelowAnyRoot();
    void theLastMappingMarkedAsDefaultIsTheDefault_data();
    void theLastMappingMarkedAsDefaultIsTheDefault();
    void aMappingWithoutSoftwareIsUnknown();
    void aFileWithoutMappingsGivesAnEmptyList();
    void aMissingFileEmitsNothingAndKeepsTheList();
    void readingAgainReplacesTheListAndKeepsTheOldMapsAlive();
    void theCustomFlagIsPassedThrough();
    void aFaceIsReadAtAnyPlaceOfALargeFile();

    void theCurrentMapIsTheFirstMapping();
    void readingTheCurrentMapOfAFileWithoutMappingsEmitsNothing();
    void readingTheCurrentMapNamesTheFile();

    void openXmlAsksForAFileAndReadsItAsAList();
    void aCancelledOpenXmlReadsNothing();
    void openXmlWithoutAChooserReadsNothing();
    void everyLayerLeavesADebugLineWhenAskedFor();
    void noDebugLinesByDefault();
};

void tst_XmlMappingReader::everyMappingIsReadInDocumentOrder()
{
    list("<ZR><MAPPING software='B'/><MAPPING software='A'/><MAPPING software='B'/></ZR>");
    QCOMPARE(m_lists, 1);
    QCOMPARE(m_list.size(), 3);
    QCOMPARE(m_list.at(0)->name, QStringLiteral("B"));
    QCOMPARE(m_list.at(1)->name, QStringLiteral("A"));
    QCOMPARE(m_list.at(2)->name, QStringLiteral("B"));
    QVERIFY(m_list.at(0)->parent() == nullptr);
    QCOMPARE(m_reader->buttonMapList(), m_list);
}

void tst_XmlMappingReader::mappingsAreFoundAtAnyDepthBelowAnyRoot()
{
    list("<x><MAPPING software='1'><b><MAPPING software='2'/></b></MAPPING>"
         "<g><g><MAPPING software='3'/></g></g><MAPPING software='4'/></x>");
    QStringList names;
    for (const ZRButtonMap *map : qAsConst(m_list)) {
        names.append(map->name);
    }
    QCOMPARE(names, (QStringList{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3"),
                                 QStringLiteral("4")}));
    list("<MAPPING software='root'/>");
    QCOMPARE(m_list.size(), 1);
    QCOMPARE(m_list.first()->name, QStringLiteral("root"));
}

void tst_XmlMappingReader::theLastMappingMarkedAsDefaultIsTheDefault_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<int>("expected");
    QTest::newRow("second") << QByteArray("<ZR><MAPPING/><MAPPING default='yes'/></ZR>") << 1;
    QTest::newRow("both empty") << QByteArray("<ZR><MAPPING default=''/><MAPPING default=''/></ZR>") << 0;
    QTest::newRow("any value counts") << QByteArray("<ZR><MAPPING/><MAPPING default='no'/></ZR>") << 1;
    QTest::newRow("the last of two")
        << QByteArray("<ZR><MAPPING/><MAPPING default='1'/><MAPPING default='1'/><MAPPING/></ZR>") << 2;
    QTest::newRow("none") << QByteArray("<ZR><MAPPING/><MAPPING/></ZR>") << 0;
}

void tst_XmlMappingReader::theLastMappingMarkedAsDefaultIsTheDefault()
{
    QFETCH(QByteArray, xml);
    QFETCH(int, expected);
    list(xml);
    QCOMPARE(m_default, expected);
}

void tst_XmlMappingReader::aMappingWithoutSoftwareIsUnknown()
{
    list("<ZR><MAPPING/><MAPPING software=''/><MAPPING software=' '/></ZR>");
    QCOMPARE(m_list.at(0)->name, QStringLiteral("Unknown"));
    QCOMPARE(m_list.at(1)->name, QStringLiteral("Unknown"));
    QCOMPARE(m_list.at(2)->name, QStringLiteral(" "));
}

void tst_XmlMappingReader::aFileWithoutMappingsGivesAnEmptyList()
{
    list("<ZR><MAPPING/></ZR>");
    list("<ZR><mapping/></ZR>");
    QCOMPARE(m_lists, 2);
    QVERIFY(m_list.isEmpty());
    QVERIFY(m_reader->buttonMapList().isEmpty());
    QCOMPARE(m_default, 0);
}

void tst_XmlMappingReader::aMissingFileEmitsNothingAndKeepsTheList()
{
    list("<ZR><MAPPING/></ZR>");
    const QList<ZRButtonMap *> before = m_reader->buttonMapList();
    m_reader->readMapList(m_directory->filePath(QStringLiteral("missing.xml")), true);
    m_reader->readCurrentMap(m_directory->filePath(QStringLiteral("missing.xml")));
    QCOMPARE(m_lists, 1);
    QVERIFY(m_current == nullptr);
    QCOMPARE(m_reader->buttonMapList(), before);
    QVERIFY(m_log->take(QtInfoMsg, QStringLiteral("missing.xml")));
}

void tst_XmlMappingReader::readingAgainReplacesTheListAndKeepsTheOldMapsAlive()
{
    list("<ZR><MAPPING software='old'/></ZR>");
    const QPointer<ZRButtonMap> old = m_list.first();
    list("<ZR><MAPPING software='new'/></ZR>");
    QCOMPARE(m_reader->buttonMapList().size(), 1);
    QCOMPARE(m_reader->buttonMapList().first()->name, QStringLiteral("new"));
    QVERIFY(!old.isNull());
    QCOMPARE(old->name, QStringLiteral("old"));
}

void tst_XmlMappingReader::theCustomFlagIsPassedThrough()
{
    list("<ZR/>", true);
    QVERIFY(m_custom);
    list("<ZR/>", false);
    QVERIFY(!m_custom);
}

void tst_XmlMappingReader::aFaceIsReadAtAnyPlaceOfALargeFile()
{
    // Of two halves, and more of them than are read at a time.
    const QString name = QString::fromUtf8("\U0001F600").repeated(40000);
    for (const char *before : {"", " "}) {
        const auto &maps =
            list("<ZR>" + QByteArray(before) + "<MAPPING software=\"" + name.toUtf8() + "\"/></ZR>");
        QCOMPARE(maps.size(), 1);
        QVERIFY(maps.constFirst()->name == name);
    }
}

void tst_XmlMappingReader::theCurrentMapIsTheFirstMapping()
{
    m_reader->readCurrentMap(
        write("<ZR><MAPPING software='current_map'><BUTTON id='3'><NORMAL label='L'/></BUTTON></MAPPING>"
              "<MAPPING software='other' default='yes'/></ZR>"));
    QVERIFY(m_current);
    QVERIFY(m_current->parent() == nullptr);
    QCOMPARE(m_current->name, QStringLiteral("current_map"));
    QCOMPARE(m_current->actions[3][Layer::Normal].label, QStringLiteral("L"));
    QCOMPARE(m_owned.size(), std::size_t(1));
    QCOMPARE(m_lists, 0);
    QVERIFY(m_reader->buttonMapList().isEmpty());
}

void tst_XmlMappingReader::readingTheCurrentMapOfAFileWithoutMappingsEmitsNothing()
{
    m_reader->readCurrentMap(write("<ZR><NOTHING/></ZR>"));
    QVERIFY(m_current == nullptr);
    QCOMPARE(m_lists, 0);
}

void tst_XmlMappingReader::readingTheCurrentMapNamesTheFile()
{
    const QString path = write("<ZR/>");
    m_reader->readCurrentMap(path);
    QCOMPARE(m_log->takeAll(QtInfoMsg), QStringList(QStringLiteral("File Name: ") + path));
}

void tst_XmlMappingReader::openXmlAsksForAFileAndReadsItAsAList()
{
    QStringList asked;
    QString path = write("<ZR><MAPPING software='chosen'/></ZR>");
    XmlMappingReader reader(
        [&asked, &path](const QString &title, const QString &directory, const QString &filter) {
            asked = QStringList{title, directory, filter};
            return path;
        });
    bool custom = true;
    QString name;
    connect(&reader, &XmlMappingReader::newMapListReady, this,
            [&](const QList<ZRButtonMap *> &maps, bool isCustom, int /*defaultMap*/) {
                custom = isCustom;
                name = maps.first()->name;
                m_owned.emplace_back(maps.first());
            });
    reader.openXml();
    QCOMPARE(asked, (QStringList{QStringLiteral("Open Xml"), QStringLiteral("."),
                                 QStringLiteral("Xml files (*.xml)")}));
    QCOMPARE(name, QStringLiteral("chosen"));
    QVERIFY(!custom);
}

void tst_XmlMappingReader::aCancelledOpenXmlReadsNothing()
{
    XmlMappingReader reader([](const QString &, const QString &, const QString &) { return QString(); });
    QSignalSpy spy(&reader, &XmlMappingReader::newMapListReady);
    reader.openXml();
    QCOMPARE(spy.count(), 0);
    QVERIFY(m_log->takeAll(QtInfoMsg).isEmpty());
}

void tst_XmlMappingReader::openXmlWithoutAChooserReadsNothing()
{
    m_reader->openXml();
    QCOMPARE(m_lists, 0);
}

void tst_XmlMappingReader::everyLayerLeavesADebugLineWhenAskedFor()
{
    QLoggingCategory::setFilterRules(QStringLiteral("veltrix.mapping.debug=true"));
    entry("<SHIFT1 label='Undo'><KEY1 type='int'>17</KEY1><KEY2>Z</KEY2></SHIFT1>", 0, 1);
    QLoggingCategory::setFilterRules(QString());
    QCOMPARE(m_log->takeAll(QtDebugMsg), QStringList(QStringLiteral("SHIFT1 Undo keys: 17 Z ")));
}

void tst_XmlMappingReader::noDebugLinesByDefault()
{
    entry("<SHIFT1 label='Undo'><KEY1 type='int'>17</KEY1></SHIFT1>");
    QVERIFY(m_log->takeAll(QtDebugMsg).isEmpty());
}

QTEST_GUILESS_MAIN(tst_XmlMappingReader)
#include "tst_XmlMappingReader.moc"
