#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"
#include "tests/unit/ui_menus/MenuOnPage.h"
#include "ui/MidiMenu.h"
#include "ui/ShortcutKey.h"

#include <QSignalSpy>
#include <QTest>

/// What a choice in the action menu does: what is stored and reported, which dialog opens, and what shift
/// buttons do to the layers.
class tst_ComboMenuChoices : public QObject, private MenuOnPage
{
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void cleanup() { end(); }

    void aChoiceIsStoredWithItsCode_data();
    void aChoiceIsStoredWithItsCode();
    void aChoiceReportsNoChangedActionButTheAssignment();
    void aChoiceLeavesTheLayersOtherFieldsAlone();
    void withoutADeviceAChoiceIsOnlyShown();
    void displayedTextsDecideNothing();

    void aShiftButtonIsOneInEveryLayer();
    void anOrdinaryChoiceMakesTheShiftLayersUsableAgain();
    void aMappingsShiftButtonGreysTheShiftLayersOut();

    void shortcutKeyOpensTheDialogOfItsLayer();
    void aCapturedShortcutReportsOneChangedAction();
    void midiOpensTheDialogWithAnOffset();
    void aMidiAssignmentReportsNoChangedAction();
    void midiForTheKnobKeepsItsEncoding();
    void aDialogThatIsCancelledStoresNothing();
    void eachLayerHasARecordOfItsOwn();

    void getShorcutStoresAllFields();
    void getShorcutOfAnUnknownLayerDoesNothing();
    void theLogLinesAreExact();

private:
    /// Both shift submenus: they are always enabled together.
    bool submenusEnabled();
};

bool tst_ComboMenuChoices::submenusEnabled()
{
    bool first = false;
    bool second = false;
    PopUp::whenOpen([&] {
        const QMenu &menu = *PopUp::active();
        first = PopUp::entry(menu, shift1)->menu()->isEnabled() && PopUp::entry(menu, shift1)->isEnabled();
        second = PopUp::entry(menu, shift2)->menu()->isEnabled() && PopUp::entry(menu, shift2)->isEnabled();
    });
    m_rig->menu().dislayMenu();
    if (first != second) {
        QTest::qFail("only one of the shift menus is enabled", __FILE__, __LINE__);
    }
    return first;
}

void tst_ComboMenuChoices::aChoiceIsStoredWithItsCode_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("label");
    QTest::newRow("left") << QStringLiteral("Monitor Left") << 2 << QStringLiteral("M.Left");
    QTest::newRow("right") << QStringLiteral("Monitor Right") << 3 << QStringLiteral("M.Right");
    const QPair<QString, int> others[] = {{QStringLiteral("Horizontal"), 4},
                                          {QStringLiteral("Vertical"), 5},
                                          {QStringLiteral("Circular"), 6},
                                          {QStringLiteral("\u2190 \u2192 Key"), 7},
                                          {QStringLiteral(" \u2193  \u2191 Key"), 8}};
    for (const auto &other : others) {
        QTest::newRow(qPrintable(other.first)) << other.first << other.second << other.first;
    }
}

void tst_ComboMenuChoices::aChoiceIsStoredWithItsCode()
{
    QFETCH(QString, text);
    QFETCH(int, code);
    QFETCH(QString, label);
    const QString titles[] = {normal, shift1, shift2};
    const QString parts[] = {QStringLiteral(".Normal."), QStringLiteral(".Shift1."),
                             QStringLiteral(".Shift2.")};
    for (int layer = 0; layer < 3; ++layer) {
        chooseFrom({titles[layer], text});
        const QString prefix = QStringLiteral("tonAction") + parts[layer]; // control 3
        QCOMPARE(m_rig->stored(prefix + QStringLiteral("key1")).toInt(), 33554431);
        QCOMPARE(m_rig->stored(prefix + QStringLiteral("key2")).toInt(), code);
        QCOMPARE(m_rig->stored(prefix + QStringLiteral("key3")).toInt(), 0);
        QCOMPARE(m_rig->stored(prefix + QStringLiteral("label")).toString(), label);
        const shortCut assignment = m_rig->menu().assignment(*Layers::fromNumber(layer));
        QCOMPARE(assignment.key1, 0x1FFFFFF);
        QCOMPARE(assignment.key2, code);
        QCOMPARE(assignment.key3, 0);
        QCOMPARE(assignment.label, label);
    }
    QCOMPARE(title()->text(), label.toUpper());
    QCOMPARE(layers()->text(), label.toUpper() + QStringLiteral(" | ") + label.toUpper());
}

void tst_ComboMenuChoices::aChoiceReportsNoChangedActionButTheAssignment()
{
    QSignalSpy changed(&m_rig->menu(), &ComboMenu::onActionChanged);
    chooseFrom({normal, QStringLiteral("Monitor Left")});
    QCOMPARE(changed.size(), 0);
    QCOMPARE(m_rig->assignments(), QStringList{QStringLiteral("0: 33554431 2 0 M.Left")});
}

void tst_ComboMenuChoices::aChoiceLeavesTheLayersOtherFieldsAlone()
{
    m_rig->menu().loadMidi(1, 7, 60, 100, 20, true, true);
    chooseFrom({shift1, QStringLiteral("Vertical")});
    const shortCut assignment = m_rig->menu().assignment(Layer::Shift1);
    QCOMPARE(assignment.channel, 7);
    QCOMPARE(assignment.v_on, 100);
    QCOMPARE(m_rig->stored(QStringLiteral("tonAction.Shift1.channel")).toInt(), 7);
    QCOMPARE(m_rig->stored(QStringLiteral("tonAction.Shift1.key1")).toInt(), 33554431);
}

void tst_ComboMenuChoices::withoutADeviceAChoiceIsOnlyShown()
{
    m_rig = std::make_unique<MenuRig>(3, false);
    chooseFrom({normal, QStringLiteral("Vertical")});
    QCOMPARE(title()->text(), QStringLiteral("VERTICAL"));
    QCOMPARE(m_rig->menu().assignment(Layer::Normal), shortCut());
    QVERIFY(!m_rig->stored(QStringLiteral("tonAction.Normal.key1")).isValid());
    QCOMPARE(m_rig->assignments(), QStringList());
}

void tst_ComboMenuChoices::displayedTextsDecideNothing()
{
    // As if translated, and meanly so.
    PopUp::whenOpen([] {
        QMenu *layer = PopUp::entry(*PopUp::active(), normal)->menu();
        PopUp::entry(*layer, QStringLiteral("Vertical"))->setText(QStringLiteral("Midi shift monitor left"));
        PopUp::choose({normal, QStringLiteral("Midi shift monitor left")});
    });
    m_rig->menu().dislayMenu();
    QCOMPARE(m_rig->assignments(), QStringList{QStringLiteral("0: 33554431 5 0 Vertical")});
    QVERIFY(submenusEnabled());
}

void tst_ComboMenuChoices::aShiftButtonIsOneInEveryLayer()
{
    QSignalSpy changed(&m_rig->menu(), &ComboMenu::onActionChanged);
    QVERIFY(submenusEnabled());
    chooseFrom({normal, shift1});
    QCOMPARE(m_rig->assignments(), (QStringList{QStringLiteral("0: 33554431 9 0 Shift 1"),
                                                QStringLiteral("1: 33554431 9 0 Shift 1"),
                                                QStringLiteral("2: 33554431 9 0 Shift 1")}));
    for (const QString &layer :
         {QStringLiteral("Normal"), QStringLiteral("Shift1"), QStringLiteral("Shift2")}) {
        QCOMPARE(m_rig->stored(QStringLiteral("tonAction.%1.key1").arg(layer)).toInt(), 33554431);
        QCOMPARE(m_rig->stored(QStringLiteral("tonAction.%1.key2").arg(layer)).toInt(), 9);
        QCOMPARE(m_rig->stored(QStringLiteral("tonAction.%1.label").arg(layer)).toString(), shift1);
    }
    QCOMPARE(title()->text(), QStringLiteral("SHIFT 1"));
    QCOMPARE(layers()->text(), QStringLiteral("SHIFT 1 | SHIFT 1"));
    QVERIFY(!submenusEnabled());
    QCOMPARE(changed.size(), 0);
}

void tst_ComboMenuChoices::anOrdinaryChoiceMakesTheShiftLayersUsableAgain()
{
    chooseFrom({normal, shift2});
    QVERIFY(!submenusEnabled());
    chooseFrom({normal, QStringLiteral("Monitor Right")});
    QVERIFY(submenusEnabled());
    QCOMPARE(layers()->text(), QStringLiteral("SHIFT 2 | SHIFT 2")); // what they still do
    QCOMPARE(m_rig->menu().assignment(Layer::Shift1).key2, 10);

    chooseFrom({normal, shift1});
    QVERIFY(!submenusEnabled());
    m_rig->menu().loadShorcut(0, 17, 90, -1, QStringLiteral("Ctrl + Z"));
    QVERIFY(submenusEnabled());
}

void tst_ComboMenuChoices::aMappingsShiftButtonGreysTheShiftLayersOut()
{
    m_rig->menu().getShorcut(0, special(SpecialAction::Shift1, shift1));
    QCOMPARE(layers()->text(), QStringLiteral("SHIFT 1 | SHIFT 1"));
    // The mapping's own records of the shift layers follow; the choice is not stored into them.
    QCOMPARE(m_rig->assignments().size(), 1);
    m_rig->menu().getShorcut(1, special(SpecialAction::Shift1, shift1));
    m_rig->menu().getShorcut(2, special(SpecialAction::Vertical, QStringLiteral("Scroll")));
    QCOMPARE(layers()->text(), QStringLiteral("SHIFT 1 | SCROLL"));
    QVERIFY(!submenusEnabled());
    m_rig->menu().getShorcut(0, keys(17, 90, QStringLiteral("Undo")));
    QVERIFY(submenusEnabled());
}

void tst_ComboMenuChoices::shortcutKeyOpensTheDialogOfItsLayer()
{
    QVERIFY(m_rig->page().findChild<ShortcutKey *>() == nullptr); // made when it is asked for
    chooseFrom({shift2, QStringLiteral("Shortcut Key")});
    QVERIFY(m_rig->shortcutKey().isVisible());
    QCOMPARE(m_rig->shortcutKey().parentWidget(), &m_rig->page());
    QCOMPARE(m_rig->assignments(), QStringList()); // nothing until it answers
    QTest::keyClick(&m_rig->shortcutKey(), Qt::Key_A);
    Q_EMIT m_rig->shortcutKey().newShorcut(2, 65, -1, -1, QStringLiteral("A"));
    QCOMPARE(m_rig->assignments(), QStringList{QStringLiteral("2: 65 -1 -1 A")});
}

void tst_ComboMenuChoices::aCapturedShortcutReportsOneChangedAction()
{
    chooseFrom({shift1, QStringLiteral("Shortcut Key")});
    QStringList order;
    connect(&m_rig->menu(), &ComboMenu::onActionChanged, this, [&] {
        order.append(m_rig->stored(QStringLiteral("tonAction.Shift1.label")).toString());
        order.append(m_rig->menu().assignment(Layer::Shift1).label);
    });
    Q_EMIT m_rig->shortcutKey().newShorcut(1, 17, 90, -1, QStringLiteral("Ctrl + Z"));
    // Once, and everything is in place by then.
    QCOMPARE(order, (QStringList{QStringLiteral("Ctrl + Z"), QStringLiteral("Ctrl + Z")}));
    QCOMPARE(m_rig->stored(QStringLiteral("tonAction.Shift1.key1")).toInt(), 17);
    QCOMPARE(m_rig->stored(QStringLiteral("tonAction.Shift1.key2")).toInt(), 90);
    QCOMPARE(m_rig->stored(QStringLiteral("tonAction.Shift1.key3")).toInt(), -1);
    QCOMPARE(layers()->text(), QStringLiteral("CTRL + Z | "));
}

void tst_ComboMenuChoices::midiOpensTheDialogWithAnOffset()
{
    chooseFrom({normal, QStringLiteral("Midi")}); // which makes it
    QTest::keyClick(&m_rig->midiMenu(), Qt::Key_Escape);
    const LogCapture log(QStringLiteral("veltrix.ui.debug=true"));
    m_rig->menu().loadMidi(1, 5, 61, 90, 10, true, true);
    m_rig->menu().loadMidi(0, 6, 62, 91, 11, false, true); // the last one is another layer's
    QSignalSpy answers(&m_rig->midiMenu(), &MidiMenu::newMidi);
    chooseFrom({shift1, QStringLiteral("Midi")});
    QVERIFY(m_rig->midiMenu().isVisible());
    const QStringList opened = log.linesHolding(QStringLiteral("buttonShortCut:"));
    QCOMPARE(opened.size(), 1);
    QVERIFY2(opened.first().contains(QLatin1String("13")), qPrintable(opened.first())); // control 3
    QTest::keyClick(&m_rig->midiMenu(), Qt::Key_Return);
    QCOMPARE(answers.size(), 1);
    // It was handed the record of its layer.
    QCOMPARE(answers.at(0), (QVariantList{1, 5, 61, 90, 10, true, true}));
}

void tst_ComboMenuChoices::aMidiAssignmentReportsNoChangedAction()
{
    chooseFrom({normal, QStringLiteral("Midi")});
    QSignalSpy changed(&m_rig->menu(), &ComboMenu::onActionChanged);
    Q_EMIT m_rig->midiMenu().newMidi(0, 1, 60, 100, 0, true, false);
    QCOMPARE(changed.size(), 0);
    const shortCut assignment = m_rig->menu().assignment(Layer::Normal);
    QCOMPARE(assignment.key1, 0x1001262);
    QCOMPARE(assignment.channel, 1);
    QCOMPARE(assignment.cc, 60);
    QCOMPARE(assignment.v_on, 100);
    QCOMPARE(assignment.v_off, 0);
    QVERIFY(assignment.note);
    QVERIFY(!assignment.v_off_enable);
    QCOMPARE(m_rig->assignments().size(), 1);
    QCOMPARE(m_rig->stored(QStringLiteral("tonAction.Normal.key1")).toInt(), 16781922);
    QCOMPARE(m_rig->stored(QStringLiteral("tonAction.Normal.on_touch")).toInt(), 100);
    QCOMPARE(m_rig->stored(QStringLiteral("tonAction.Normal.after_touch_on")).toBool(), false);
    QCOMPARE(title()->text(), QStringLiteral("MIDI"));
}

void tst_ComboMenuChoices::midiForTheKnobKeepsItsEncoding()
{
    chooseFrom({shift2, QStringLiteral("Midi for Knob")});
    QTest::keyClick(&m_rig->midiMenu(), Qt::Key_Escape);
    QSignalSpy changed(&m_rig->menu(), &ComboMenu::onActionChanged);
    Q_EMIT m_rig->midiMenu().newMidiKnob(2, 1, 60, 100, 0, false, true, 20, false, true, false);
    QCOMPARE(changed.size(), 0);
    QCOMPARE(m_rig->menu().assignment(Layer::Shift2).key1, 0x1001261);
    QCOMPARE(m_rig->menu().assignment(Layer::Shift2).knobcc, 20);
    QVERIFY(m_rig->menu().assignment(Layer::Shift2).m3fh);
    QCOMPARE(m_rig->stored(QStringLiteral("tonAction.Shift2.key1")).toInt(), 16781921);
    QCOMPARE(m_rig->stored(QStringLiteral("tonAction.Shift2.m3fh")).toBool(), true);
    QCOMPARE(layers()->text(), QStringLiteral(" | MIDI FOR KNOB"));

    QSignalSpy answers(&m_rig->midiMenu(), &MidiMenu::newMidiKnob);
    chooseFrom({shift2, QStringLiteral("Midi for Knob")});
    QTest::keyClick(&m_rig->midiMenu(), Qt::Key_Return);
    QCOMPARE(answers.size(), 1);
    QCOMPARE(answers.at(0), (QVariantList{2, 1, 60, 100, 0, false, true, 20, false, true, false}));
}

void tst_ComboMenuChoices::aDialogThatIsCancelledStoresNothing()
{
    chooseFrom({normal, QStringLiteral("Shortcut Key")});
    m_rig->shortcutKey().hide();
    chooseFrom({normal, QStringLiteral("Midi")});
    QTest::keyClick(&m_rig->midiMenu(), Qt::Key_Escape);
    QVERIFY(!m_rig->midiMenu().isVisible());
    QCOMPARE(m_rig->assignments(), QStringList());
    QCOMPARE(title()->text(), QString());
    QVERIFY(!m_rig->stored(QStringLiteral("tonAction.Normal.key1")).isValid());
}

void tst_ComboMenuChoices::eachLayerHasARecordOfItsOwn()
{
    m_rig->menu().loadMidi(0, 1, 60, 100, 0, true, true);
    m_rig->menu().loadShorcut(1, 17, 90, -1, QStringLiteral("Ctrl + Z"));
    QCOMPARE(m_rig->menu().assignment(Layer::Normal).key1, 0x1001262);
    QCOMPARE(m_rig->menu().assignment(Layer::Shift1).key1, 17);
    QCOMPARE(m_rig->menu().assignment(Layer::Shift1).channel, 0);
    QCOMPARE(m_rig->menu().assignment(Layer::Shift2), shortCut());
}

void tst_ComboMenuChoices::getShorcutStoresAllFields()
{
    shortCut record = keys(1, 2, QStringLiteral("label"));
    record.key3 = 3;
    record.channel = 4;
    record.cc = 5;
    record.v_on = 6;
    record.v_off = 7;
    record.note = true;
    record.v_off_enable = false;
    record.knobcc = 8;
    record.m01h = true;
    record.m3fh = true;
    record.m0_127 = true;
    QSignalSpy changed(&m_rig->menu(), &ComboMenu::onActionChanged);
    const char *const layerParts[] = {"Normal", "Shift1", "Shift2"};
    for (int layer = 0; layer < 3; ++layer) {
        m_rig->menu().getShorcut(layer, record);
        QCOMPARE(m_rig->menu().assignment(*Layers::fromNumber(layer)), record);
        const QString prefix = QStringLiteral("tonAction.%1.").arg(QLatin1String(layerParts[layer]));
        const QMap<QString, QString> expected{
            {QStringLiteral("key1"), QStringLiteral("1")},
            {QStringLiteral("key2"), QStringLiteral("2")},
            {QStringLiteral("key3"), QStringLiteral("3")},
            {QStringLiteral("label"), QStringLiteral("label")},
            {QStringLiteral("channel"), QStringLiteral("4")},
            {QStringLiteral("cc"), QStringLiteral("5")},
            {QStringLiteral("on_touch"), QStringLiteral("6")},
            {QStringLiteral("after_touch"), QStringLiteral("7")},
            {QStringLiteral("note"), QStringLiteral("true")},
            {QStringLiteral("after_touch_on"), QStringLiteral("false")},
            {QStringLiteral("knobcc"), QStringLiteral("8")},
            {QStringLiteral("m01h"), QStringLiteral("true")},
            {QStringLiteral("m3fh"), QStringLiteral("true")},
            {QStringLiteral("m0_127"), QStringLiteral("true")},
        };
        QCOMPARE(m_rig->storedUnder(prefix), expected);
    }
    QCOMPARE(changed.size(), 0);
}

void tst_ComboMenuChoices::getShorcutOfAnUnknownLayerDoesNothing()
{
    for (const int layer : {-1, 3}) {
        m_rig->menu().getShorcut(layer, keys(17, 90, QStringLiteral("Undo")));
    }
    QCOMPARE(m_rig->assignments(), QStringList());
    QVERIFY(m_rig->storedUnder(QString()).isEmpty());
}

void tst_ComboMenuChoices::theLogLinesAreExact()
{
    LogCapture log(QStringLiteral("veltrix.ui.debug=true"));
    m_rig->menu().getShorcut(1, keys(17, 90, QStringLiteral("Ctrl + Z")));
    QCOMPARE(log.takeLines(),
             QStringList{QStringLiteral("debug: B_ID: 3 type: 1 received shortcut: Ctrl + Z")});
    m_rig->menu().loadMidi(0, 1, 60, 100, 0, true, false);
    QCOMPARE(log.takeLines().first(), QStringLiteral("debug: New MIDI: 0 1 60 100 0 true false"));
    m_rig->menu().loadMidiKnob(0, 1, 60, 100, 0, true, false, 20, true, false, false);
    QCOMPARE(log.takeLines().first(),
             QStringLiteral("debug: New MIDI for Knob: 0 1 60 100 0 true false 20 true false false"));
}

QTEST_MAIN(tst_ComboMenuChoices)
#include "tst_ComboMenuChoices.moc"
