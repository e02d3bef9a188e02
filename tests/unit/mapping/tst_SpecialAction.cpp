#include "mapping/SpecialAction.h"
#include "tests/support/main/Main.h"

#include <QTest>

namespace
{

shortCut beginningWith(qint32 key1, qint32 key2 = 0)
{
    shortCut action;
    action.key1 = key1;
    action.key2 = key2;
    return action;
}

} // namespace

class tst_SpecialAction : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void codesAndNamesBelongTogether_data();
    void codesAndNamesBelongTogether();
    void theArrowNamesAreExactToTheByte();
    void codesWithoutANameAreEmpty_data();
    void codesWithoutANameAreEmpty();
    void namesAreFoundAnywhereInATextInAnyCase_data();
    void namesAreFoundAnywhereInATextInAnyCase();
    void theMarkersHaveTheirValues();
    void onlyTheTwoMarkersAreMidi();
    void theFirstKeyTellsTheKind();
    void onlyASpecialActionsSecondKeyIsACode();
};

void tst_SpecialAction::codesAndNamesBelongTogether_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("name");
    QTest::newRow("2") << 2 << "monitor left";
    QTest::newRow("3") << 3 << "monitor right";
    QTest::newRow("4") << 4 << "horizontal";
    QTest::newRow("5") << 5 << "vertical";
    QTest::newRow("6") << 6 << "circular";
    QTest::newRow("7") << 7 << QStringLiteral("← → Key");
    QTest::newRow("8") << 8 << QStringLiteral(" ↓  ↑ Key");
    QTest::newRow("9") << 9 << "shift 1";
    QTest::newRow("10") << 10 << "shift 2";
    QTest::newRow("11") << 11 << "midi";
}

void tst_SpecialAction::codesAndNamesBelongTogether()
{
    QFETCH(int, code);
    QFETCH(QString, name);
    QCOMPARE(specialActionName(code), name);
    QCOMPARE(specialActionCode(name), code);
}

void tst_SpecialAction::theArrowNamesAreExactToTheByte()
{
    QCOMPARE(specialActionName(7).toUtf8(), QByteArray("\xE2\x86\x90 \xE2\x86\x92 Key"));
    QCOMPARE(specialActionName(8).toUtf8(), QByteArray(" \xE2\x86\x93  \xE2\x86\x91 Key"));
}

void tst_SpecialAction::codesWithoutANameAreEmpty_data()
{
    QTest::addColumn<int>("code");
    QTest::newRow("0") << 0;
    QTest::newRow("1") << 1;
    QTest::newRow("12") << 12;
    QTest::newRow("-1") << -1;
    QTest::newRow("marker") << static_cast<int>(SPECIAL_ACTION);
}

void tst_SpecialAction::codesWithoutANameAreEmpty()
{
    QFETCH(int, code);
    QCOMPARE(specialActionName(code), QStringLiteral("empty"));
}

void tst_SpecialAction::namesAreFoundAnywhereInATextInAnyCase_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("code");
    QTest::newRow("case") << "Monitor Left" << 2;
    QTest::newRow("inside") << "jump to the MONITOR RIGHT, please" << 3;
    QTest::newRow("circular before vertical") << "vertical and circular" << 6;
    QTest::newRow("vertical before horizontal") << "horizontal vertical" << 5;
    QTest::newRow("horizontal before the monitors") << "monitor left horizontal" << 4;
    QTest::newRow("up and down before left and right") << QStringLiteral("← → Key ↓  ↑ Key") << 8;
    QTest::newRow("shift before midi") << "midi shift 2" << 10;
    QTest::newRow("shift 10 holds shift 1") << "shift 10" << 9;
    QTest::newRow("the leading blank counts") << QStringLiteral("↓  ↑ Key") << 0;
    QTest::newRow("both blanks count") << QStringLiteral(" ↓ ↑ Key") << 0;
    QTest::newRow("none") << "none" << 0;
    QTest::newRow("empty") << "empty" << 0;
    QTest::newRow("nothing") << "" << 0;
}

void tst_SpecialAction::namesAreFoundAnywhereInATextInAnyCase()
{
    QFETCH(QString, text);
    QFETCH(int, code);
    QCOMPARE(specialActionCode(text), code);
}

void tst_SpecialAction::theMarkersHaveTheirValues()
{
    QCOMPARE(static_cast<int>(SPECIAL_ACTION), 33554431);
    QCOMPARE(static_cast<int>(MIDI_KNOB_ACTION), 16781921);
    QCOMPARE(static_cast<int>(MIDI_BUTTON_ACTION), 16781922);
}

void tst_SpecialAction::onlyTheTwoMarkersAreMidi()
{
    QVERIFY(isMidi(beginningWith(MIDI_KNOB_ACTION)));
    QVERIFY(isMidi(beginningWith(MIDI_BUTTON_ACTION)));
    QVERIFY(!isMidi(beginningWith(MIDI_KNOB_ACTION - 1)));
    QVERIFY(!isMidi(beginningWith(MIDI_BUTTON_ACTION + 1)));
    QVERIFY(!isMidi(beginningWith(SPECIAL_ACTION)));
    QVERIFY(!isMidi(beginningWith(-1)));
    QVERIFY(!isMidi(beginningWith(std::numeric_limits<qint32>::min())));
}

void tst_SpecialAction::theFirstKeyTellsTheKind()
{
    QCOMPARE(actionKind(beginningWith(SPECIAL_ACTION)), ActionKind::Special);
    QCOMPARE(actionKind(beginningWith(MIDI_KNOB_ACTION)), ActionKind::MidiKnob);
    QCOMPARE(actionKind(beginningWith(MIDI_BUTTON_ACTION)), ActionKind::MidiButton);
    for (const qint32 key : {0, -1, 65, SPECIAL_ACTION - 1, SPECIAL_ACTION + 1, MIDI_BUTTON_ACTION + 1}) {
        QCOMPARE(actionKind(beginningWith(key)), ActionKind::Shortcut);
    }
}

void tst_SpecialAction::onlyASpecialActionsSecondKeyIsACode()
{
    QCOMPARE(specialAction(beginningWith(SPECIAL_ACTION, 9)), SpecialAction::Shift1);
    QCOMPARE(specialAction(beginningWith(SPECIAL_ACTION, 11)), SpecialAction::Midi);
    for (const int code : {-1, 0, 1, 12}) {
        QCOMPARE(specialAction(beginningWith(SPECIAL_ACTION, code)), SpecialAction::Empty);
    }
    for (const qint32 key : {17, qint32{MIDI_KNOB_ACTION}, qint32{MIDI_BUTTON_ACTION}}) {
        QCOMPARE(specialAction(beginningWith(key, 9)), SpecialAction::Empty);
    }
}

QTEST_GUILESS_MAIN(tst_SpecialAction)
#include "tst_SpecialAction.moc"
