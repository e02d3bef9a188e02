#include "mapping/SpecialAction.h"
#include "tests/support/main/Main.h"
#include "tests/unit/ui_menus/MenuRig.h"
#include "ui/ComboMenuLabel.h"
#include "ui/ComboMenuSettings.h"

#include <QTest>

using Stored = QMap<QString, QVariant>;
Q_DECLARE_METATYPE(Stored)

class tst_ComboMenuSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachControlHasKeysOfItsOwn_data();
    void eachControlHasKeysOfItsOwn();
    void assignmentsComeBackAtTheNextStart();
    void theShift2ValuesComeBackFromOtherKeys();
    void beingReadStoresAndReportsNothing();
    void nothingStoredIsAnUnsetEntry();
    void anOlderVersionsAssignmentsAreUpgraded_data();
    void anOlderVersionsAssignmentsAreUpgraded();
};

void tst_ComboMenuSettings::eachControlHasKeysOfItsOwn_data()
{
    QTest::addColumn<int>("control");
    QTest::addColumn<QString>("prefix");
    QTest::newRow("0") << 0 << QStringLiteral("ButtonAction.");
    QTest::newRow("1") << 1 << QStringLiteral("uttonAction.");
    QTest::newRow("9") << 9 << QStringLiteral("ion.");
}

void tst_ComboMenuSettings::eachControlHasKeysOfItsOwn()
{
    QFETCH(int, control);
    QFETCH(QString, prefix);
    MenuRig rig(control);
    rig.menu().loadShorcut(0, 17, 90, -1, QStringLiteral("Ctrl + Z"));
    rig.menu().loadMidi(2, 1, 60, 100, 0, true, true);
    const QMap<QString, QString> all = rig.storedUnder(QString());
    QCOMPARE(all.size(), 28);
    for (auto it = all.begin(); it != all.end(); ++it) {
        QVERIFY2(it.key().startsWith(prefix), qPrintable(it.key()));
    }
    QCOMPARE(all.value(prefix + QStringLiteral("Normal.label")), QStringLiteral("Ctrl + Z"));
    QCOMPARE(all.value(prefix + QStringLiteral("Shift2.on_touch")), QStringLiteral("100"));
}

void tst_ComboMenuSettings::assignmentsComeBackAtTheNextStart()
{
    MenuRig rig(3, true, {{QStringLiteral("ZR.ver"), QStringLiteral("1.10")}}); // as the page leaves it
    rig.menu().loadShorcut(0, 17, 90, -1, QStringLiteral("Ctrl + Z"));
    rig.menu().loadMidiKnob(1, 3, 60, 100, 5, true, false, 20, false, false, true);
    QWidget page;
    QObject link;
    const ComboMenu again(3, &link, &page, rig.settings());
    QCOMPARE(again.assignment(Layer::Normal), rig.menu().assignment(Layer::Normal));
    QCOMPARE(again.assignment(Layer::Shift1), rig.menu().assignment(Layer::Shift1));
    QCOMPARE(again.assignment(Layer::Shift2), shortCut());
    QCOMPARE(again.findChildren<ComboMenuLabel *>().at(0)->text(), QStringLiteral("CTRL + Z"));
    QCOMPARE(again.findChildren<ComboMenuLabel *>().at(1)->text(), QStringLiteral("MIDI FOR KNOB | "));
}

void tst_ComboMenuSettings::theShift2ValuesComeBackFromOtherKeys()
{
    MenuRig rig(3, true,
                {{QStringLiteral("tonAction.Shift2.on_touch"), 11},
                 {QStringLiteral("tonAction.Shift2.after_touch"), 12},
                 {QStringLiteral("tonAction.Shift2.value_on"), 21},
                 {QStringLiteral("tonAction.Shift2.value_off"), 22},
                 {QStringLiteral("tonAction.Shift1.on_touch"), 31},
                 {QStringLiteral("tonAction.Shift1.value_on"), 41}});
    ComboMenu &menu = rig.menu();
    QCOMPARE(menu.assignment(Layer::Shift2).v_on, 21);
    QCOMPARE(menu.assignment(Layer::Shift2).v_off, 22);
    QCOMPARE(menu.assignment(Layer::Shift1).v_on, 31);

    menu.loadMidi(2, 1, 60, 100, 5, true, true);
    QCOMPARE(rig.stored(QStringLiteral("tonAction.Shift2.on_touch")).toInt(), 100);
    QCOMPARE(rig.stored(QStringLiteral("tonAction.Shift2.value_on")).toInt(), 21);
}

void tst_ComboMenuSettings::beingReadStoresAndReportsNothing()
{
    MenuRig rig(3, true, {{QStringLiteral("tonAction.Normal.label"), QStringLiteral("Shift 1")}});
    QCOMPARE(rig.assignments(), QStringList());
    QCOMPARE(rig.storedUnder(QString()).size(), 1);
}

void tst_ComboMenuSettings::nothingStoredIsAnUnsetEntry()
{
    MenuRig rig;
    for (const Layer layer : Layers::all) {
        QCOMPARE(rig.menu().assignment(layer), shortCut());
    }
    QVERIFY(rig.storedUnder(QString()).isEmpty());
}

void tst_ComboMenuSettings::anOlderVersionsAssignmentsAreUpgraded_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<int>("key1");
    QTest::addColumn<int>("key2");
    QTest::addColumn<QString>("label");
    QTest::addColumn<int>("upgraded");
    const QString old = QStringLiteral("1.09");
    const QString midi = QStringLiteral("Midi");
    const QString other = QStringLiteral("other");
    QTest::newRow("special, old") << old << 17 << 4 << other << 33554431;
    QTest::newRow("special, never run") << QString() << 17 << 4 << other << 33554431;
    QTest::newRow("special, this version") << QStringLiteral("1.10") << 17 << 4 << other << 17;
    QTest::newRow("special, newer version") << QStringLiteral("1.2") << 17 << 4 << other << 17;
    QTest::newRow("midi, old") << old << 20 << 4 << other << 16781922;
    QTest::newRow("midi, this version") << QStringLiteral("1.10") << 20 << 4 << other << 20;
    QTest::newRow("labelled midi, old") << old << 33554431 << 11 << midi << 16781922;
    QTest::newRow("labelled MIDI, old") << old << 33554431 << 11 << QStringLiteral("MIDI") << 33554431;
    QTest::newRow("a shortcut labelled midi, old") << old << 77 << 11 << midi << 77;
    QTest::newRow("the knob's, old") << old << 16781921 << 11 << midi << 16781921;
    QTest::newRow("shortcut, old") << old << 65 << -1 << other << 65;
}

void tst_ComboMenuSettings::anOlderVersionsAssignmentsAreUpgraded()
{
    QFETCH(QString, version);
    QFETCH(int, key1);
    QFETCH(int, key2);
    QFETCH(QString, label);
    QFETCH(int, upgraded);
    Stored prepared;
    if (!version.isEmpty()) {
        prepared.insert(QStringLiteral("ZR.ver"), version);
    }
    for (const QString &layer :
         {QStringLiteral("Normal"), QStringLiteral("Shift1"), QStringLiteral("Shift2")}) {
        const QString prefix = QStringLiteral("tonAction.%1.").arg(layer);
        prepared.insert(prefix + QStringLiteral("key1"), key1);
        prepared.insert(prefix + QStringLiteral("key2"), key2);
        prepared.insert(prefix + QStringLiteral("label"), label);
    }
    MenuRig rig(3, true, prepared);
    for (const Layer layer : Layers::all) {
        QCOMPARE(rig.menu().assignment(layer).key1, upgraded);
        QCOMPARE(rig.menu().assignment(layer).key2, key2);
        QCOMPARE(rig.menu().assignment(layer).label, label);
    }
    QCOMPARE(rig.stored(QStringLiteral("tonAction.Shift2.key1")).toInt(), upgraded);
    QCOMPARE(rig.stored(QStringLiteral("ZR.ver")).toString(), version); // the page writes it
}

QTEST_MAIN(tst_ComboMenuSettings)
#include "tst_ComboMenuSettings.moc"
