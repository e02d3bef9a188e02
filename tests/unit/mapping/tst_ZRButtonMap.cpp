#include "mapping/SpecialAction.h"
#include "mapping/ZRButtonMap.h"
#include "tests/support/main/Main.h"

#include <QSignalSpy>
#include <QTest>

namespace
{

shortCut everyField()
{
    shortCut action;
    action.key1 = 17;
    action.key2 = 90;
    action.key3 = -1;
    action.label = QStringLiteral("Undo");
    action.channel = 3;
    action.cc = 60;
    action.v_on = 100;
    action.v_off = 1;
    action.note = true;
    action.v_off_enable = false;
    action.knobcc = 20;
    action.m01h = true;
    action.m3fh = true;
    action.m0_127 = true;
    return action;
}

bool untouched(const ZRButtonMap &map)
{
    for (const auto &button : map.actions) {
        for (const shortCut &entry : button) {
            if (entry != shortCut()) {
                return false;
            }
        }
    }
    return true;
}

} // namespace

class Sender : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void mapReady(ZRButtonMap *map);
    void listReady(QList<ZRButtonMap *> maps);
};

class tst_ZRButtonMap : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void copiesOfATableChangeAlone();
    void aFreshMapHoldsTheDefaultsInAllThirtyEntries();
    void anEntryIsStoredAtItsButtonAndLayer();
    void buttonsAndLayersOutOfRangeChangeNothing_data();
    void buttonsAndLayersOutOfRangeChangeNothing();
    void textsAddressButtonsAndLayers_data();
    void textsAddressButtonsAndLayers();
    void storingLeavesTheKnobFieldsAlone();
    void assigningAWholeEntryKeepsTheKnobFields();
    void equalityLooksAtEveryField();
    void mapsAndListsTravelThroughQueuedSignals();
    void theParentOwnsTheMap();
};

void tst_ZRButtonMap::aFreshMapHoldsTheDefaultsInAllThirtyEntries()
{
    const ZRButtonMap map(QStringLiteral("Name"), nullptr);
    QCOMPARE(map.name, QStringLiteral("Name"));
    QVERIFY(map.parent() == nullptr);
    int entries = 0;
    for (const auto &button : map.actions) {
        for (const shortCut &entry : button) {
            ++entries;
            QCOMPARE(entry.key1, 0);
            QCOMPARE(entry.key2, 0);
            QCOMPARE(entry.key3, 0);
            QVERIFY(entry.label.isEmpty());
            QCOMPARE(entry.channel, 0);
            QCOMPARE(entry.cc, 0);
            QCOMPARE(entry.v_on, 0);
            QCOMPARE(entry.v_off, 0);
            QVERIFY(!entry.note);
            QVERIFY(entry.v_off_enable);
            QCOMPARE(entry.knobcc, 0);
            QVERIFY(!entry.m01h);
            QVERIFY(!entry.m3fh);
            QVERIFY(!entry.m0_127);
        }
    }
    QCOMPARE(entries, 30);
}

void tst_ZRButtonMap::anEntryIsStoredAtItsButtonAndLayer()
{
    for (int button = 0; button < ActionTable::controlCount; ++button) {
        for (const Layer layer : Layers::all) {
            ZRButtonMap map(QString(), nullptr);
            map.setAction(button, Layers::number(layer), everyField());
            QCOMPARE(map.actions[button][layer].label, QStringLiteral("Undo"));
            map.actions[button][layer] = shortCut();
            QVERIFY(untouched(map));
        }
    }
}

void tst_ZRButtonMap::buttonsAndLayersOutOfRangeChangeNothing_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<int>("layer");
    QTest::newRow("button 10") << 10 << 0;
    QTest::newRow("button -1") << -1 << 0;
    QTest::newRow("layer 3") << 0 << 3;
    QTest::newRow("layer -1") << 0 << -1;
    QTest::newRow("most negative") << std::numeric_limits<int>::min() << std::numeric_limits<int>::min();
    QTest::newRow("most positive") << std::numeric_limits<int>::max() << std::numeric_limits<int>::max();
}

void tst_ZRButtonMap::buttonsAndLayersOutOfRangeChangeNothing()
{
    QFETCH(int, button);
    QFETCH(int, layer);
    ZRButtonMap map(QString(), nullptr);
    map.setAction(button, layer, everyField());
    QVERIFY(untouched(map));
}

void tst_ZRButtonMap::textsAddressButtonsAndLayers_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("layer");
    QTest::addColumn<int>("storedButton"); // -1: nothing is stored
    QTest::addColumn<int>("storedLayer");
    QTest::newRow("3 SHIFT2") << "3"
                              << "SHIFT2" << 3 << 2;
    QTest::newRow("9 SHIFT1") << "9"
                              << "SHIFT1" << 9 << 1;
    QTest::newRow("layer names mind the case") << "3"
                                               << "Shift2" << -1 << -1;
    QTest::newRow("text that is no number") << "x"
                                            << "NORMAL" << 0 << 0;
    QTest::newRow("no text") << ""
                             << "NORMAL" << 0 << 0;
    QTest::newRow("hexadecimal is no number") << "0x3"
                                              << "NORMAL" << 0 << 0;
    QTest::newRow("a number too large is none") << "99999999999"
                                                << "NORMAL" << 0 << 0;
    QTest::newRow("button 10") << "10"
                               << "NORMAL" << -1 << -1;
    QTest::newRow("button -1") << "-1"
                               << "NORMAL" << -1 << -1;
    QTest::newRow("unknown layer") << "1"
                                   << "SHIFT3" << -1 << -1;
    QTest::newRow("no layer") << "1"
                              << "" << -1 << -1;
}

void tst_ZRButtonMap::textsAddressButtonsAndLayers()
{
    QFETCH(QString, button);
    QFETCH(QString, layer);
    QFETCH(int, storedButton);
    QFETCH(int, storedLayer);
    ZRButtonMap map(QString(), nullptr);
    map.setAction(button, layer, everyField());
    if (storedButton >= 0) {
        shortCut &stored = map.actions[storedButton][*Layers::fromNumber(storedLayer)];
        QCOMPARE(stored.key2, 90);
        stored = shortCut();
    }
    QVERIFY(untouched(map));
}

void tst_ZRButtonMap::storingLeavesTheKnobFieldsAlone()
{
    ZRButtonMap map(QString(), nullptr);
    map.actions[2][Layer::Shift1].knobcc = 5;
    map.actions[2][Layer::Shift1].m01h = true;
    shortCut action = everyField();
    action.m01h = false;
    map.setAction(2, 1, action);

    const shortCut &stored = map.actions[2][Layer::Shift1];
    QCOMPARE(stored.knobcc, 5);
    QVERIFY(stored.m01h);
    QVERIFY(!stored.m3fh);
    QVERIFY(!stored.m0_127);
    shortCut expected = action;
    expected.knobcc = 5;
    expected.m01h = true;
    expected.m3fh = false;
    expected.m0_127 = false;
    QVERIFY(stored == expected);
}

void tst_ZRButtonMap::assigningAWholeEntryKeepsTheKnobFields()
{
    ZRButtonMap map(QString(), nullptr);
    map.actions[0][Layer::Normal] = everyField();
    QCOMPARE(map.actions[0][Layer::Normal].knobcc, 20);
    QVERIFY(map.actions[0][Layer::Normal].m0_127);
}

void tst_ZRButtonMap::equalityLooksAtEveryField()
{
    const shortCut base = everyField();
    QVERIFY(base == everyField());
    int differing = 0;
    const auto differs = [&base, &differing](auto change) {
        shortCut other = base;
        change(other);
        differing += other != base && !(other == base) ? 1 : 0;
    };
    differs([](shortCut &s) { ++s.key1; });
    differs([](shortCut &s) { ++s.key2; });
    differs([](shortCut &s) { ++s.key3; });
    differs([](shortCut &s) { s.label += QLatin1Char('x'); });
    differs([](shortCut &s) { ++s.channel; });
    differs([](shortCut &s) { ++s.cc; });
    differs([](shortCut &s) { ++s.v_on; });
    differs([](shortCut &s) { ++s.v_off; });
    differs([](shortCut &s) { s.note = !s.note; });
    differs([](shortCut &s) { s.v_off_enable = !s.v_off_enable; });
    differs([](shortCut &s) { ++s.knobcc; });
    differs([](shortCut &s) { s.m01h = !s.m01h; });
    differs([](shortCut &s) { s.m3fh = !s.m3fh; });
    differs([](shortCut &s) { s.m0_127 = !s.m0_127; });
    QCOMPARE(differing, 14);
}

void tst_ZRButtonMap::mapsAndListsTravelThroughQueuedSignals()
{
    QCOMPARE(ZRButtonMap::staticMetaObject.className(), "ZRButtonMap");
    Sender sender;
    ZRButtonMap map(QStringLiteral("One"), nullptr);
    ZRButtonMap *arrivedMap = nullptr;
    QList<ZRButtonMap *> arrivedList;
    connect(
        &sender, &Sender::mapReady, this, [&arrivedMap](ZRButtonMap *m) { arrivedMap = m; },
        Qt::QueuedConnection);
    connect(
        &sender, &Sender::listReady, this, [&arrivedList](const QList<ZRButtonMap *> &l) { arrivedList = l; },
        Qt::QueuedConnection);
    Q_EMIT sender.mapReady(&map);
    Q_EMIT sender.listReady({&map, &map});
    QVERIFY(arrivedMap == nullptr);
    QCoreApplication::processEvents();
    QCOMPARE(arrivedMap, &map);
    QCOMPARE(arrivedList, (QList<ZRButtonMap *>{&map, &map}));
}

void tst_ZRButtonMap::theParentOwnsTheMap()
{
    auto parent = std::make_unique<QObject>();
    QPointer<ZRButtonMap> map = new ZRButtonMap(QStringLiteral("One"), parent.get());
    parent.reset();
    QVERIFY(map.isNull());
}

void tst_ZRButtonMap::copiesOfATableChangeAlone()
{
    ActionTable one;
    const ActionTable empty;
    ActionTable other = one;
    QVERIFY(other == one);
    other[3][Layer::Shift1].key1 = 65;
    QVERIFY(other != one);
    QCOMPARE(empty[3][Layer::Shift1].key1, 0);
    QCOMPARE(ActionTable()[3][Layer::Shift1].key1, 0);
    one[3][Layer::Shift1].key1 = 65;
    QVERIFY(other == one);
}

QTEST_GUILESS_MAIN(tst_ZRButtonMap)
#include "tst_ZRButtonMap.moc"
