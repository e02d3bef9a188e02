#include "app/frame/AppFonts.h"
#include "mapping/SpecialAction.h"
#include "mapping/XmlMappingReader.h"

#include <QDomDocument>
#include <QFile>
#include <QFontMetrics>
#include <QSet>
#include <QtTest>

/// Every mapping that ships is a test case.
class tst_ExampleMappings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void thereAreEnoughOfThem();
    void exactlyOneIsTheDefaultAndTheReaderFindsIt();
    void everyMappingIsComplete_data();
    void everyMappingIsComplete();
    void everyKeyIsAKey_data() { everyMappingIsComplete_data(); }
    void everyKeyIsAKey();
    void everyLabelFitsItsMenu_data() { everyMappingIsComplete_data(); }
    void everyLabelFitsItsMenu();
    void aShiftButtonIsOneInAllLayers_data() { everyMappingIsComplete_data(); }
    void aShiftButtonIsOneInAllLayers();
    void everyMappingUsesLayersAndKnob_data() { everyMappingIsComplete_data(); }
    void everyMappingUsesLayersAndKnob();

private:
    const ZRButtonMap &current() const;
    QDomElement element() const;

    QDomDocument m_document;
    QObject m_owner;
    QList<ZRButtonMap *> m_maps;
    int m_default = -1;
};

void tst_ExampleMappings::initTestCase()
{
    AppFonts::load();
    QFile file(QStringLiteral(LIBRARY));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(m_document.setContent(&file));

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

const ZRButtonMap &tst_ExampleMappings::current() const
{
    const QString tag = QString::fromUtf8(QTest::currentDataTag());
    const auto found =
        std::find_if(m_maps.begin(), m_maps.end(), [&](const ZRButtonMap *m) { return m->name == tag; });
    return **found;
}

QDomElement tst_ExampleMappings::element() const
{
    const QDomNodeList all = m_document.elementsByTagName(QStringLiteral("MAPPING"));
    for (int index = 0; index < all.size(); ++index) {
        if (all.at(index).toElement().attribute(QStringLiteral("software")) ==
            QString::fromUtf8(QTest::currentDataTag())) {
            return all.at(index).toElement();
        }
    }
    return {};
}

void tst_ExampleMappings::thereAreEnoughOfThem()
{
    QVERIFY2(m_maps.size() >= 24, qPrintable(QString::number(m_maps.size())));
    QSet<QString> names;
    for (const ZRButtonMap *map : m_maps) {
        QVERIFY2(!map->name.isEmpty() && !names.contains(map->name), qPrintable(map->name));
        names.insert(map->name);
    }
}

void tst_ExampleMappings::exactlyOneIsTheDefaultAndTheReaderFindsIt()
{
    const QDomNodeList all = m_document.elementsByTagName(QStringLiteral("MAPPING"));
    QList<int> marked;
    for (int index = 0; index < all.size(); ++index) {
        if (!all.at(index).toElement().attribute(QStringLiteral("default")).isEmpty()) {
            marked << index;
        }
    }
    QCOMPARE(marked, QList<int>{m_default});
}

void tst_ExampleMappings::everyMappingIsComplete_data()
{
    QTest::addColumn<int>("unused");
    for (const ZRButtonMap *map : m_maps) {
        QTest::newRow(map->name.toUtf8().constData()) << 0;
    }
}

void tst_ExampleMappings::everyMappingIsComplete()
{
    const QDomElement mapping = element();
    QSet<QString> ids;
    for (QDomElement button = mapping.firstChildElement(); !button.isNull();
         button = button.nextSiblingElement()) {
        QCOMPARE(button.tagName(), QStringLiteral("BUTTON"));
        ids.insert(button.attribute(QStringLiteral("id")));
        for (const auto *layer : {"NORMAL", "SHIFT1", "SHIFT2"}) {
            const QDomElement entry = button.firstChildElement(QLatin1String(layer));
            QVERIFY2(!entry.isNull(), layer);
            QVERIFY2(!entry.attribute(QStringLiteral("label")).trimmed().isEmpty(), layer);
        }
    }
    QCOMPARE(ids.size(), 10);
    for (int id = 0; id < 10; ++id) {
        QVERIFY(ids.contains(QString::number(id)));
    }
}

void tst_ExampleMappings::everyKeyIsAKey()
{
    for (const auto &layers : current().actions) {
        for (const shortCut &action : layers) {
            if (action.key1 == SPECIAL_ACTION) {
                QVERIFY2(specialActionName(action.key2) != QLatin1String("empty"), qPrintable(action.label));
            } else if (isMidiAction(action.key1)) {
                QVERIFY2(action.channel >= 1 && action.channel <= 16, qPrintable(action.label));
                for (const int value : {action.cc, action.v_on, action.v_off}) {
                    QVERIFY2(value >= 0 && value <= 127, qPrintable(action.label));
                }
            } else {
                QVERIFY2(action.key1 > 0 && action.key1 < 255, qPrintable(action.label));
                for (const int key : {action.key2, action.key3}) {
                    QVERIFY2(key == -1 || (key > 0 && key < 255), qPrintable(action.label));
                }
            }
        }
    }
}

void tst_ExampleMappings::everyLabelFitsItsMenu()
{
    constexpr int width = 148; // from the text's left edge to the frame
    const QFontMetrics title(QFont(QStringLiteral("Segoe UI"), 12, QFont::Bold));
    const QFontMetrics layers(QFont(QStringLiteral("Segoe UI"), 10));
    for (const auto &button : current().actions) {
        QVERIFY2(title.horizontalAdvance(button[0].label.toUpper()) <= width, qPrintable(button[0].label));
        const QString both = button[1].label.toUpper() + QStringLiteral(" | ") + button[2].label.toUpper();
        QVERIFY2(layers.horizontalAdvance(both) <= width, qPrintable(both));
        for (const shortCut &action : button) {
            QVERIFY(!action.label.contains(QLatin1Char('|'))); // it separates the layers
        }
    }
}

void tst_ExampleMappings::aShiftButtonIsOneInAllLayers()
{
    for (const auto &button : current().actions) {
        const auto isShift = [](const shortCut &action) {
            return action.key1 == SPECIAL_ACTION &&
                   (action.key2 == int(SpecialAction::Shift1) || action.key2 == int(SpecialAction::Shift2));
        };
        if (isShift(button[0])) {
            QCOMPARE(button[1].key2, button[0].key2);
            QCOMPARE(button[2].key2, button[0].key2);
        } else {
            QVERIFY(!isShift(button[1]) && !isShift(button[2]));
        }
    }
}

void tst_ExampleMappings::everyMappingUsesLayersAndKnob()
{
    bool shift = false;
    bool knob = false;
    for (const auto &button : current().actions) {
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
