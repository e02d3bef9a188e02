#include "app/frame/ActionLabels.h"
#include "mapping/SpecialAction.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"
#include "tests/unit/ui_menus/MenuRig.h"
#include "tests/unit/ui_menus/PopUp.h"
#include "ui/ComboMenu.h"
#include "ui/ComboMenuLabel.h"
#include "ui/MidiMenu.h"
#include "ui/ShortcutKey.h"

#include <QAccessible>
#include <QGraphicsEffect>
#include <QLabel>
#include <QSignalSpy>
#include <QtTest>

namespace
{

const QString normal = QStringLiteral("Normal");
const QString shift1 = QStringLiteral("Shift 1");
const QString shift2 = QStringLiteral("Shift 2");

shortCut keys(int key1, int key2, const QString &label)
{
    shortCut record;
    record.key1 = key1;
    record.key2 = key2;
    record.key3 = -1;
    record.label = label;
    return record;
}

shortCut special(SpecialAction action, const QString &label)
{
    return keys(SPECIAL_ACTION, static_cast<int>(action), label);
}

} // namespace

class tst_ComboMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aCombinationNeverLosesItsLastKey();
    void tellsWholeWhatItsLabelsCut();
    void init() { m_rig = std::make_unique<MenuRig>(); }
    void cleanup() { m_rig.reset(); }

    void labelsAndPicturesAreInPlace();
    void theMenuHasItsEntriesInOrder();
    void theLayersAreShownInUpperCase();
    void aShift1ChoiceKeepsTheRestOfTheLayerLabel();
    void aMappingsMonitorsShowAsChosenOnes();
    void anEndlessLabelIsCutAndSaidInFullByTheToolTip();
    void mappingsLabelsAreNoMarkup();

    void aChoiceIsStoredWithItsCode_data();
    void aChoiceIsStoredWithItsCode();
    void aChoiceReportsNoChangedActionButTheAssignment();
    void aChoiceLeavesTheLayersOtherFieldsAlone();
    void withoutADeviceAChoiceIsOnlyShown();
    void displayedTextsDecideNothing();
    void closingTheMenuChangesNothing();

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

    void theCheckMarkShowsWhatTheLayerDoes_data();
    void theCheckMarkShowsWhatTheLayerDoes();
    void aChoiceThatOnlyOpensADialogMovesNoCheckMark();
    void theMenuOpensBelowAndDimsTheBar();
    void theKeyboardOpensTheMenu();
    void aClickOnTheBarOfTheOpenMenuDoesNotReopenIt();
    void hidingThePageClosesTheMenu();
    void screenReadersAreToldWhatItIs();
    void screenReadersOpenTheMenu();

private:
    void chooseFrom(const QStringList &path)
    {
        PopUp::chooseWhenOpen(path);
        m_rig->menu().dislayMenu();
    }
    bool submenusEnabled();
    ComboMenuLabel *title() { return m_rig->menu().findChildren<ComboMenuLabel *>().at(0); }
    ComboMenuLabel *layers() { return m_rig->menu().findChildren<ComboMenuLabel *>().at(1); }

    std::unique_ptr<MenuRig> m_rig;
};

// Both shift submenus: they are always enabled together.
bool tst_ComboMenu::submenusEnabled()
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

void tst_ComboMenu::aCombinationNeverLosesItsLastKey()
{
    ComboMenuLabel label(nullptr);
    label.setFont(ActionLabels::layersFont());
    const QString keys = QStringLiteral("CTRL + ALT + PRTSCN");
    label.setParts({keys});
    const auto shownIn = [&label](const QString &sample) {
        label.resize(label.fontMetrics().horizontalAdvance(sample) + 2, 20);
        return label.shownText();
    };
    QCOMPARE(shownIn(keys), keys);
    QCOMPARE(shownIn(QStringLiteral("CTRL+ALT+PRTSCN")), QStringLiteral("CTRL+ALT+PRTSCN"));
    QCOMPARE(label.cutParts(), QVector<int>());
    QCOMPARE(shownIn(QStringLiteral("CT+AL+PRTSCN")), QStringLiteral("CT+AL+PRTSCN"));
    QCOMPARE(label.cutParts(), QVector<int>{0});
    QCOMPARE(shownIn(QStringLiteral("\u2026AL+PRTSCN")), QStringLiteral("\u2026AL+PRTSCN"));

    // Two of them side by side, as Shift 1 and Shift 2 are.
    label.setParts({keys, QStringLiteral("CTRL + \u21e7 + ALT + HOME")});
    label.resize(ActionLabels::room, 20);
    const QStringList parts = label.shownText().split(QStringLiteral(" | "));
    QCOMPARE(parts.size(), 2);
    QVERIFY2(parts.at(0).endsWith(QLatin1String("SCN")), qPrintable(label.shownText()));
    QVERIFY2(parts.at(1).endsWith(QLatin1String("HOME")), qPrintable(label.shownText()));
    // Names keep their beginnings.
    label.setParts({QStringLiteral("A NAME FAR LONGER THAN THE ROOM THAT THERE IS")});
    QVERIFY(label.shownText().startsWith(QLatin1String("A NAME FAR")));
}

void tst_ComboMenu::tellsWholeWhatItsLabelsCut()
{
    MenuRig rig(3);
    rig.menu().loadShorcut(1, 17, 44, -1, QStringLiteral("Ctrl + PrtScn"));
    QCOMPARE(rig.menu().cutLabels(), QStringList());
    rig.menu().loadShorcut(1, 17, 18, 44, QStringLiteral("Ctrl + Alt + PrtScn"));
    rig.menu().loadShorcut(2, 17, 18, 33, QStringLiteral("Ctrl + Alt + PgUp"));
    QCOMPARE(rig.menu().cutLabels(), (QStringList{QStringLiteral("Button 3, Shift 1: Ctrl + Alt + PrtScn"),
                                                  QStringLiteral("Button 3, Shift 2: Ctrl + Alt + PgUp")}));
}

void tst_ComboMenu::labelsAndPicturesAreInPlace()
{
    const ComboMenu &menu = m_rig->menu();
    QCOMPARE(menu.size(), QSize(160, 40));
    struct Row {
        QRect place;
        QString style;
        int pointSize;
        int weight;
    };
    const QVector<Row> rows{
        {{0, 0, 160, 40}, QStringLiteral("background-image: url(:/icons/comboboarder.png);"), 0, 0},
        {{142, 18, 13, 7}, QStringLiteral("background-image: url(:/icons/comboarrow.png);"), 0, 0},
        {{10, 0, 150, 20},
         QStringLiteral("QLabel { color : rgba(255,255,255,1);  background-color: rgba(0,0,0,0);}"),
         12,
         75},
        {{10, 20, 150, 20},
         QStringLiteral("QLabel { color : rgba(255,255,255,0.87);  background-color: rgba(0,0,0,0);}"),
         10,
         50},
    };
    const QList<QLabel *> labels = menu.findChildren<QLabel *>();
    QCOMPARE(labels.size(), rows.size());
    for (int i = 0; i < rows.size(); ++i) {
        QCOMPARE(labels.at(i)->geometry(), rows.at(i).place);
        QCOMPARE(labels.at(i)->styleSheet(), rows.at(i).style);
        if (rows.at(i).pointSize > 0) {
            QCOMPARE(labels.at(i)->font().family(), QStringLiteral("Segoe UI"));
            QCOMPARE(labels.at(i)->font().pointSize(), rows.at(i).pointSize);
            QCOMPARE(labels.at(i)->font().weight(), rows.at(i).weight);
        }
    }
    QCOMPARE(title()->text(), QString());
    QCOMPARE(layers()->text(), QStringLiteral(" | "));
    for (const char *picture : {":/icons/comboboarder.png", ":/icons/comboarrow.png"}) {
        QVERIFY(!QImage(QLatin1String(picture)).isNull());
    }
}

void tst_ComboMenu::theMenuHasItsEntriesInOrder()
{
    QStringList top;
    QStringList entries[3];
    PopUp::whenOpen([&] {
        const QMenu &menu = *PopUp::active();
        top = PopUp::texts(menu);
        for (int layer = 0; layer < 3; ++layer) {
            entries[layer] = PopUp::texts(*menu.actions().at(2 * layer)->menu());
        }
    });
    m_rig->menu().dislayMenu();
    QCOMPARE(top, (QStringList{normal, QStringLiteral("-"), shift1, QStringLiteral("-"), shift2}));
    QStringList expected{QStringLiteral("Shortcut Key"),
                         QStringLiteral("Midi"),
                         QStringLiteral("-"),
                         QStringLiteral("Monitor Left"),
                         QStringLiteral("Monitor Right"),
                         QStringLiteral("- Knob"),
                         QStringLiteral("Horizontal"),
                         QStringLiteral("Vertical"),
                         QStringLiteral("Circular"),
                         QStringLiteral(" \u2193  \u2191 Key"),
                         QStringLiteral("\u2190 \u2192 Key"),
                         QStringLiteral("Midi for Knob")};
    QCOMPARE(entries[1], expected);
    QCOMPARE(entries[2], expected);
    expected += {QStringLiteral("-"), shift1, shift2};
    QCOMPARE(entries[0], expected);
}

void tst_ComboMenu::theLayersAreShownInUpperCase()
{
    m_rig->menu().getShorcut(0, keys(17, 90, QStringLiteral("Undo")));
    m_rig->menu().getShorcut(1, keys(17, 67, QStringLiteral("copy")));
    m_rig->menu().getShorcut(2, keys(17, 86, QStringLiteral("Paste")));
    QCOMPARE(title()->text(), QStringLiteral("UNDO"));
    QCOMPARE(layers()->text(), QStringLiteral("COPY | PASTE"));
}

void tst_ComboMenu::aShift1ChoiceKeepsTheRestOfTheLayerLabel()
{
    m_rig->menu().getShorcut(2, keys(17, 86, QStringLiteral("Paste")));
    QCOMPARE(layers()->text(), QStringLiteral(" | PASTE"));
    m_rig->menu().getShorcut(1, keys(17, 67, QStringLiteral("a|b")));
    QCOMPARE(layers()->text(), QStringLiteral("A|B | PASTE"));
    m_rig->menu().getShorcut(2, keys(17, 86, QStringLiteral("c")));
    QCOMPARE(layers()->text(), QStringLiteral("A|B | C"));
    chooseFrom({shift1, QStringLiteral("Circular")});
    QCOMPARE(layers()->text(), QStringLiteral("CIRCULAR | C"));
    QCOMPARE(title()->text(), QString());
}

void tst_ComboMenu::aMappingsMonitorsShowAsChosenOnes()
{
    m_rig->menu().getShorcut(0, special(SpecialAction::MonitorLeft, QStringLiteral("monitor left")));
    m_rig->menu().getShorcut(1, special(SpecialAction::MonitorRight, QStringLiteral("Monitor Right")));
    QCOMPARE(title()->text(), QStringLiteral("M.LEFT"));
    QCOMPARE(layers()->text(), QStringLiteral("M.RIGHT | "));
    QCOMPARE(m_rig->menu().assignment(Layer::Normal).label,
             QStringLiteral("monitor left")); // kept as it came
}

void tst_ComboMenu::anEndlessLabelIsCutAndSaidInFullByTheToolTip()
{
    const QString endless = QStringLiteral("Ctrl + Shift + Alt + Backspace and so on");
    for (int layer = 0; layer < 3; ++layer) {
        m_rig->menu().getShorcut(layer, keys(17, 90, endless));
    }
    QCOMPARE(title()->text(), endless.toUpper());
    const QFontMetrics metrics(layers()->font());
    QVERIFY(title()->shownText().size() < endless.size());
    QVERIFY(metrics.horizontalAdvance(layers()->shownText()) <= ActionLabels::room);
    QVERIFY(!ActionLabels::fit(endless, endless, endless));
    // Both layers have their share.
    const QStringList parts = layers()->shownText().split(QStringLiteral(" | "));
    QCOMPARE(parts.size(), 2);
    QVERIFY2(parts.at(0).endsWith(QLatin1String("ON")) && parts.at(1).endsWith(QLatin1String("ON")),
             qPrintable(layers()->shownText()));
    QVERIFY(m_rig->menu().toolTip().contains(endless));
    // A short one leaves its room to the other.
    m_rig->menu().getShorcut(2, keys(17, 90, QStringLiteral("x")));
    QVERIFY(layers()->shownText().endsWith(QLatin1String(" | X")));
    QVERIFY(layers()->shownText().size() > parts.at(0).size() + 8);
}

void tst_ComboMenu::mappingsLabelsAreNoMarkup()
{
    m_rig->menu().getShorcut(0, keys(17, 90, QStringLiteral("<b>bold</b>")));
    QCOMPARE(title()->textFormat(), Qt::PlainText);
    QVERIFY(m_rig->menu().toolTip().contains(QLatin1String("&lt;b&gt;bold")));
}

void tst_ComboMenu::aChoiceIsStoredWithItsCode_data()
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

void tst_ComboMenu::aChoiceIsStoredWithItsCode()
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

void tst_ComboMenu::aChoiceReportsNoChangedActionButTheAssignment()
{
    QSignalSpy changed(&m_rig->menu(), &ComboMenu::onActionChanged);
    chooseFrom({normal, QStringLiteral("Monitor Left")});
    QCOMPARE(changed.size(), 0);
    QCOMPARE(m_rig->assignments(), QStringList{QStringLiteral("0: 33554431 2 0 M.Left")});
}

void tst_ComboMenu::aChoiceLeavesTheLayersOtherFieldsAlone()
{
    m_rig->menu().loadMidi(1, 7, 60, 100, 20, true, true);
    chooseFrom({shift1, QStringLiteral("Vertical")});
    const shortCut assignment = m_rig->menu().assignment(Layer::Shift1);
    QCOMPARE(assignment.channel, 7);
    QCOMPARE(assignment.v_on, 100);
    QCOMPARE(m_rig->stored(QStringLiteral("tonAction.Shift1.channel")).toInt(), 7);
    QCOMPARE(m_rig->stored(QStringLiteral("tonAction.Shift1.key1")).toInt(), 33554431);
}

void tst_ComboMenu::withoutADeviceAChoiceIsOnlyShown()
{
    m_rig = std::make_unique<MenuRig>(3, false);
    chooseFrom({normal, QStringLiteral("Vertical")});
    QCOMPARE(title()->text(), QStringLiteral("VERTICAL"));
    QCOMPARE(m_rig->menu().assignment(Layer::Normal), shortCut());
    QVERIFY(!m_rig->stored(QStringLiteral("tonAction.Normal.key1")).isValid());
    QCOMPARE(m_rig->assignments(), QStringList());
}

void tst_ComboMenu::displayedTextsDecideNothing()
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

void tst_ComboMenu::closingTheMenuChangesNothing()
{
    m_rig->menu().getShorcut(0, keys(17, 90, QStringLiteral("Undo")));
    m_rig->takeAssignments();
    PopUp::whenOpen([] {});
    m_rig->menu().dislayMenu();
    QCOMPARE(title()->text(), QStringLiteral("UNDO"));
    QCOMPARE(m_rig->assignments(), QStringList());
}

void tst_ComboMenu::aShiftButtonIsOneInEveryLayer()
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

void tst_ComboMenu::anOrdinaryChoiceMakesTheShiftLayersUsableAgain()
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

void tst_ComboMenu::aMappingsShiftButtonGreysTheShiftLayersOut()
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

void tst_ComboMenu::shortcutKeyOpensTheDialogOfItsLayer()
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

void tst_ComboMenu::aCapturedShortcutReportsOneChangedAction()
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

void tst_ComboMenu::midiOpensTheDialogWithAnOffset()
{
    chooseFrom({normal, QStringLiteral("Midi")}); // which makes it
    QTest::keyClick(&m_rig->midiMenu(), Qt::Key_Escape);
    const LogCapture log(QStringLiteral("veltrix.ui.debug=true"));
    m_rig->menu().loadMidi(1, 5, 61, 90, 10, true, true);
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

void tst_ComboMenu::aMidiAssignmentReportsNoChangedAction()
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

void tst_ComboMenu::midiForTheKnobKeepsItsEncoding()
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

void tst_ComboMenu::aDialogThatIsCancelledStoresNothing()
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

void tst_ComboMenu::eachLayerHasARecordOfItsOwn()
{
    m_rig->menu().loadMidi(0, 1, 60, 100, 0, true, true);
    m_rig->menu().loadShorcut(1, 17, 90, -1, QStringLiteral("Ctrl + Z"));
    QCOMPARE(m_rig->menu().assignment(Layer::Normal).key1, 0x1001262);
    QCOMPARE(m_rig->menu().assignment(Layer::Shift1).key1, 17);
    QCOMPARE(m_rig->menu().assignment(Layer::Shift1).channel, 0);
    QCOMPARE(m_rig->menu().assignment(Layer::Shift2), shortCut());
}

void tst_ComboMenu::getShorcutStoresAllFields()
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

void tst_ComboMenu::getShorcutOfAnUnknownLayerDoesNothing()
{
    for (const int layer : {-1, 3}) {
        m_rig->menu().getShorcut(layer, keys(17, 90, QStringLiteral("Undo")));
    }
    QCOMPARE(m_rig->assignments(), QStringList());
    QVERIFY(m_rig->storedUnder(QString()).isEmpty());
}

void tst_ComboMenu::theLogLinesAreExact()
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

void tst_ComboMenu::theCheckMarkShowsWhatTheLayerDoes_data()
{
    QTest::addColumn<int>("key1");
    QTest::addColumn<int>("key2");
    QTest::addColumn<QString>("entry");
    QTest::newRow("nothing yet") << 0 << 0 << QString();
    QTest::newRow("empty") << 0x1FFFFFF << 0 << QString();
    QTest::newRow("unknown code") << 0x1FFFFFF << 12 << QString();
    QTest::newRow("shortcut") << 17 << 90 << QStringLiteral("Shortcut Key");
    QTest::newRow("left") << 0x1FFFFFF << 2 << QStringLiteral("Monitor Left");
    QTest::newRow("down up") << 0x1FFFFFF << 8 << QStringLiteral(" \u2193  \u2191 Key");
    QTest::newRow("shift 2") << 0x1FFFFFF << 10 << shift2;
    QTest::newRow("midi") << 0x1001262 << 0 << QStringLiteral("Midi");
    QTest::newRow("midi for the knob") << 0x1001261 << 0 << QStringLiteral("Midi for Knob");
}

void tst_ComboMenu::theCheckMarkShowsWhatTheLayerDoes()
{
    QFETCH(int, key1);
    QFETCH(int, key2);
    QFETCH(QString, entry);
    m_rig->menu().getShorcut(1, keys(17, 90, QStringLiteral("Undo")));
    m_rig->menu().getShorcut(0, keys(key1, key2, QStringLiteral("some label"))); // which decides nothing
    QStringList checked[2];
    PopUp::whenOpen([&] {
        for (int layer = 0; layer < 2; ++layer) {
            const QList<QAction *> actions = PopUp::active()->actions().at(2 * layer)->menu()->actions();
            for (const QAction *action : actions) {
                if (action->isChecked()) {
                    checked[layer].append(action->text());
                }
            }
        }
    });
    m_rig->menu().dislayMenu();
    QCOMPARE(checked[0], entry.isEmpty() ? QStringList() : QStringList{entry});
    QCOMPARE(checked[1], QStringList{QStringLiteral("Shortcut Key")});
}

void tst_ComboMenu::aChoiceThatOnlyOpensADialogMovesNoCheckMark()
{
    chooseFrom({normal, QStringLiteral("Vertical")});
    chooseFrom({normal, QStringLiteral("Midi")});
    chooseFrom({normal, QStringLiteral("Vertical")}); // choosing it again does not take it away
    QStringList checked;
    PopUp::whenOpen([&] {
        const QList<QAction *> actions = PopUp::active()->actions().first()->menu()->actions();
        for (const QAction *action : actions) {
            if (action->isChecked()) {
                checked.append(action->text());
            }
        }
    });
    m_rig->menu().dislayMenu();
    QCOMPARE(checked, QStringList{QStringLiteral("Vertical")});
}

void tst_ComboMenu::theMenuOpensBelowAndDimsTheBar()
{
    auto *dimming = qobject_cast<QGraphicsOpacityEffect *>(m_rig->menu().graphicsEffect());
    QVERIFY(dimming);
    QCOMPARE(dimming->opacity(), 0.5);
    QVERIFY(!dimming->isEnabled());
    for (int i = 0; i < 2; ++i) {
        bool dimmed = false;
        QPoint place;
        PopUp::whenOpen([&] {
            dimmed = dimming->isEnabled();
            place = PopUp::active()->pos();
        });
        m_rig->menu().dislayMenu();
        QVERIFY(dimmed);
        QVERIFY(!dimming->isEnabled());
        QCOMPARE(place, m_rig->menu().mapToGlobal(QPoint(0, 40)));
    }
}

void tst_ComboMenu::theKeyboardOpensTheMenu()
{
    QVERIFY(m_rig->menu().focusPolicy() & Qt::TabFocus);
    int opened = 0;
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        PopUp::whenOpen([&] { ++opened; });
        QTest::keyClick(&m_rig->menu(), key);
    }
    PopUp::whenOpen([&] { ++opened; });
    QTest::mousePress(&m_rig->menu(), Qt::LeftButton);
    QCOMPARE(opened, 4);
    QTest::mousePress(&m_rig->menu(), Qt::RightButton); // would wait here for ever
}

void tst_ComboMenu::aClickOnTheBarOfTheOpenMenuDoesNotReopenIt()
{
    int opened = 0;
    PopUp::whenOpen([&] {
        ++opened;
        m_rig->menu().dislayMenu(); // as the replayed click does
    });
    m_rig->menu().dislayMenu();
    QCOMPARE(opened, 1);
}

void tst_ComboMenu::hidingThePageClosesTheMenu()
{
    bool open = true;
    QTimer::singleShot(0, [&] {
        m_rig->page().hide();
        open = QApplication::activePopupWidget() != nullptr;
    });
    m_rig->menu().dislayMenu();
    QVERIFY(!open);
}

void tst_ComboMenu::screenReadersAreToldWhatItIs()
{
    QCOMPARE(m_rig->menu().accessibleName(), QStringLiteral("Button 3"));
    m_rig->menu().getShorcut(0, keys(17, 90, QStringLiteral("Undo")));
    m_rig->menu().getShorcut(1, special(SpecialAction::MonitorLeft, QStringLiteral("M.Left")));
    QCOMPARE(m_rig->menu().inWords(Layer::Normal), QStringLiteral("Undo: presses Ctrl + Z"));
    QCOMPARE(m_rig->menu().inWords(Layer::Shift1), QStringLiteral("Moves the pointer to the next monitor"));
    QCOMPARE(m_rig->menu().inWords(Layer::Shift2), QStringLiteral("Nothing yet"));
    for (const Layer layer : Layers::all) {
        QVERIFY(m_rig->menu().accessibleDescription().contains(m_rig->menu().inWords(layer)));
        QVERIFY(m_rig->menu().toolTip().contains(m_rig->menu().inWords(layer)));
    }
}

void tst_ComboMenu::screenReadersOpenTheMenu()
{
    QAccessibleInterface *bar = QAccessible::queryAccessibleInterface(&m_rig->menu());
    QCOMPARE(bar->role(), QAccessible::ButtonMenu);
    QVERIFY(bar->state().hasPopup && bar->state().focusable);
    QCOMPARE(bar->text(QAccessible::Name), QStringLiteral("Button 3"));
    QVERIFY(bar->text(QAccessible::Description).contains(QLatin1String("Normal: ")));
    QCOMPARE(bar->childCount(), 0);
    QVERIFY(bar->actionInterface()->actionNames().contains(QAccessibleActionInterface::showMenuAction()));

    bar->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
    QVERIFY(!QApplication::activePopupWidget()); // it has come back at once
    bool opened = false;
    QTimer::singleShot(0, [&] {
        opened = QApplication::activePopupWidget() != nullptr;
        QApplication::activePopupWidget()->close();
    });
    QCoreApplication::processEvents();
    QTRY_VERIFY(opened);
}

QTEST_MAIN(tst_ComboMenu)
#include "tst_ComboMenu.moc"
