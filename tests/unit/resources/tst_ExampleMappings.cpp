#include "app/frame/AppFonts.h"
#include "mapping/SpecialAction.h"
#include "mapping/XmlMappingReader.h"
#include "tests/support/main/Main.h"
#include "tools/lint/LibraryLint.h"

#include <QTest>

/// Every mapping that ships is a test case.
class tst_ExampleMappings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void nothingIsWrongWithThem();
    void thereAreEnoughOfThem();
    void theDefaultIsTheFirst();
    void everyMappingUsesLayersAndKnob_data();
    void everyMappingUsesLayersAndKnob();

private:
    QObject m_owner;
    QList<ZRButtonMap *> m_maps;
    int m_default = -1;
};

void tst_ExampleMappings::initTestCase()
{
    AppFonts::load();
    XmlMappingReader reader;
    connect(&reader, &XmlMappingReader::newMapListReady, this,
            [this](const QList<ZRButtonMap *> &maps, bool, int defaultMap) {
                m_maps = maps;
                m_default = defaultMap;
                for (ZRButtonMap *map : maps) {
                    map->setParent(&m_owner);
                }
            });
    reader.readMapList(QStringLiteral(LIBRARY), false);
}

void tst_ExampleMappings::nothingIsWrongWithThem()
{
    QCOMPARE(LibraryLint::faults(QStringLiteral(LIBRARY)), QStringList());
}

void tst_ExampleMappings::thereAreEnoughOfThem()
{
    QVERIFY2(m_maps.size() >= 24, qPrintable(QString::number(m_maps.size())));
}

void tst_ExampleMappings::theDefaultIsTheFirst()
{
    QCOMPARE(m_default, 0);
}

void tst_ExampleMappings::everyMappingUsesLayersAndKnob_data()
{
    QTest::addColumn<int>("index");
    for (int index = 0; index < m_maps.size(); ++index) {
        QTest::newRow(m_maps.at(index)->name.toUtf8().constData()) << index;
    }
}

void tst_ExampleMappings::everyMappingUsesLayersAndKnob()
{
    QFETCH(int, index);
    bool shift = false;
    bool knob = false;
    for (const auto &button : m_maps.at(index)->actions) {
        for (const shortCut &action : button) {
            const bool special = action.key1 == SPECIAL_ACTION;
            shift = shift || (special && action.key2 >= int(SpecialAction::Shift1) &&
                              action.key2 <= int(SpecialAction::Shift2));
            knob = knob || action.key1 == MIDI_KNOB_ACTION ||
                   (special && action.key2 >= int(SpecialAction::Horizontal) &&
                    action.key2 <= int(SpecialAction::UpDownKeys));
        }
    }
    QVERIFY(shift);
    QVERIFY(knob);
}

QTEST_MAIN(tst_ExampleMappings)
#include "tst_ExampleMappings.moc"
