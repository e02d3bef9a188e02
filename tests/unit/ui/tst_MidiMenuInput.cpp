#include "tests/support/main/Main.h"
#include "tests/unit/ui/MidiMenuRig.h"

namespace
{

const QString red = QStringLiteral("QLineEdit { color : red;}");

} // namespace

/// What is typed and checked in the MIDI dialog: what is valid, which boxes exclude each other, and what is
/// reported when.
class tst_MidiMenuInput : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { AppFonts::load(); }

    void aChannelOf16IsRedAndNotSent();
    void aChannelOf15IsAccepted();
    void aStoredChannelOf16IsRedAtOnce();
    void aTouchValueOf128IsRedAndNotSent();
    void aTouchValueOf127IsAccepted();
    void limits_data();
    void limits();
    void redGoesWhenTheTextIsValidAgain();
    void everyValidKeystrokeIsReported();
    void aHiddenFieldDoesNotHinder();
    void aHiddenFieldKeepsItsLastValidValue();
    void inKnobModeTheTouchIsTheRecords();

    void absoluteAfter7FhLeavesOnlyAbsolute();
    void atMostOneModeIsChecked_data();
    void atMostOneModeIsChecked();
    void uncheckingAModeLeavesNone();
    void ccAndNoteExcludeEachOther();
    void theTouchNumberStaysWhenItsKindChanges();
    void uncheckingAfterTouchHidesItsValue();
    void theKnobsAfterTouchValueStaysHidden();

    void okReportsOnceMoreAndCloses();
    void okClosesWithAnInvalidFieldToo();
    void returnIsOk();
    void escapeClosesWithoutReporting();
    void reportsTheLayerOfTheLastShow();
};

void tst_MidiMenuInput::aChannelOf16IsRedAndNotSent()
{
    MidiMenuRig rig;
    rig.dialog.show(0, 13, someRecord());
    rig.channel->selectAll();
    QTest::keyClick(rig.channel, Qt::Key_1);
    rig.midi.clear();
    QTest::keyClick(rig.channel, Qt::Key_6);
    QCOMPARE(rig.channel->text(), QStringLiteral("16"));
    QCOMPARE(rig.channel->styleSheet(), red);
    QCOMPARE(rig.midi.size(), 0);
}

void tst_MidiMenuInput::aChannelOf15IsAccepted()
{
    MidiMenuRig rig;
    rig.dialog.show(0, 13, someRecord());
    MidiMenuRig::type(rig.channel, QStringLiteral("15"));
    QCOMPARE(rig.channel->styleSheet(), QStringLiteral("QLineEdit { color : #2D2D2D;}"));
    QCOMPARE(rig.midi.last(), (QVariantList{0, 15, 60, 100, 5, true, true}));
}

void tst_MidiMenuInput::aStoredChannelOf16IsRedAtOnce()
{
    MidiMenuRig rig;
    shortCut record = someRecord();
    record.channel = 16;
    rig.dialog.show(0, 13, record);
    QCOMPARE(rig.channel->text(), QStringLiteral("16"));
    QCOMPARE(rig.channel->styleSheet(), red);
    MidiMenuRig::type(rig.value, QStringLiteral("5"));
    QCOMPARE(rig.midi.size(), 0);
    MidiMenuRig::type(rig.channel, QStringLiteral("3"));
    QVERIFY(rig.channel->styleSheet() != red);
    QCOMPARE(rig.midi.last().at(1).toInt(), 3);
    rig.dialog.hide();
    rig.dialog.show(0, 13, someRecord());
    QVERIFY(rig.channel->styleSheet() != red);
}

void tst_MidiMenuInput::aTouchValueOf128IsRedAndNotSent()
{
    MidiMenuRig rig;
    rig.dialog.show(0, 13, someRecord());
    MidiMenuRig::type(rig.value, QStringLiteral("12"));
    rig.midi.clear();
    QTest::keyClick(rig.value, Qt::Key_8);
    QCOMPARE(rig.value->styleSheet(), red);
    QCOMPARE(rig.midi.size(), 0);
}

void tst_MidiMenuInput::aTouchValueOf127IsAccepted()
{
    MidiMenuRig rig;
    rig.dialog.show(0, 13, someRecord());
    MidiMenuRig::type(rig.value, QStringLiteral("127"));
    QCOMPARE(rig.value->styleSheet(), QStringLiteral("QLineEdit { color : #2D2D2D; }"));
    QCOMPARE(rig.midi.last(), (QVariantList{0, 3, 60, 127, 5, true, true}));
}

void tst_MidiMenuInput::limits_data()
{
    QTest::addColumn<int>("field"); // in the table's order
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("valid");
    const struct {
        const char *name;
        int most;
    } fields[] = {{"channel", 15}, {"knob CC", 127}, {"number", 127}, {"value", 127}, {"after-touch", 127}};
    for (int i = 0; i < 5; ++i) {
        const auto row = [&](const QString &text, bool valid) {
            QTest::addRow("%s '%s'", fields[i].name, qPrintable(text)) << i << text << valid;
        };
        row(QStringLiteral("0"), true);
        row(QString::number(fields[i].most), true);
        row(QString::number(fields[i].most + 1), false);
        row(QStringLiteral("-1"), false);
        row(QStringLiteral("99999999999"), false);
        row(QString(), false);
        row(QStringLiteral("x"), false);
        row(QStringLiteral("1x"), false);
        row(QStringLiteral("1.5"), false);
        row(QStringLiteral("0x1"), false);
        row(QStringLiteral("007"), true);
    }
}

void tst_MidiMenuInput::limits()
{
    QFETCH(int, field);
    QFETCH(QString, text);
    QFETCH(bool, valid);
    MidiMenuRig rig;
    const bool knob = field == 1;
    if (knob) {
        rig.dialog.showKnob(0, 3, someRecord());
    } else {
        rig.dialog.show(0, 13, someRecord());
    }
    QLineEdit *edit = rig.dialog.findChildren<QLineEdit *>().at(field);
    const QString normal = edit->styleSheet();
    edit->setText(text);
    rig.midi.clear();
    rig.knob.clear();
    Q_EMIT edit->textEdited(text);
    QCOMPARE(edit->styleSheet(), valid ? normal : red);
    QCOMPARE((knob ? rig.knob : rig.midi).size(), valid ? 1 : 0);
}

void tst_MidiMenuInput::redGoesWhenTheTextIsValidAgain()
{
    MidiMenuRig rig;
    rig.dialog.show(0, 13, someRecord());
    MidiMenuRig::type(rig.afterValue, QStringLiteral("500"));
    QCOMPARE(rig.afterValue->styleSheet(), red);
    QTest::keyClick(rig.afterValue, Qt::Key_Backspace);
    QCOMPARE(rig.afterValue->styleSheet(),
             QStringLiteral("QLineEdit { color : #2D2D2D;  background-color:white}"));
    QCOMPARE(rig.midi.last().at(4).toInt(), 50);

    MidiMenuRig::type(rig.afterValue, QStringLiteral("500"));
    rig.dialog.hide();
    rig.dialog.show(0, 13, someRecord());
    QCOMPARE(rig.afterValue->text(), QStringLiteral("5"));
    QVERIFY(rig.afterValue->styleSheet() != red);
}

void tst_MidiMenuInput::everyValidKeystrokeIsReported()
{
    MidiMenuRig rig;
    rig.dialog.show(2, 13, someRecord());
    rig.number->selectAll();
    QTest::keyClicks(rig.number, QStringLiteral("123"));
    QCOMPARE(rig.midi.size(), 3);
    QCOMPARE(rig.midi.at(0), (QVariantList{2, 3, 1, 100, 5, true, true}));
    QCOMPARE(rig.midi.at(1), (QVariantList{2, 3, 12, 100, 5, true, true}));
    QCOMPARE(rig.midi.at(2), (QVariantList{2, 3, 123, 100, 5, true, true}));
    QCOMPARE(rig.knob.size(), 0);
}

void tst_MidiMenuInput::aHiddenFieldDoesNotHinder()
{
    MidiMenuRig rig;
    shortCut record = someRecord();
    record.v_on = 300;
    rig.dialog.showKnob(0, 3, record);
    MidiMenuRig::type(rig.knobCC, QStringLiteral("7"));
    QCOMPARE(rig.knob.last(), (QVariantList{0, 3, 60, 300, 5, true, true, 7, false, true, false}));
}

void tst_MidiMenuInput::aHiddenFieldKeepsItsLastValidValue()
{
    MidiMenuRig rig;
    rig.dialog.show(0, 13, someRecord());
    MidiMenuRig::type(rig.afterValue, QStringLiteral("44"));
    MidiMenuRig::type(rig.afterValue, QStringLiteral("x"));
    rig.midi.clear();
    QTest::mouseClick(rig.box("After Touch"), Qt::LeftButton, Qt::NoModifier, {10, 15});
    QTest::mouseClick(rig.ok(), Qt::LeftButton);
    QCOMPARE(rig.midi.last(), (QVariantList{0, 3, 60, 100, 44, true, false}));
}

void tst_MidiMenuInput::inKnobModeTheTouchIsTheRecords()
{
    MidiMenuRig rig;
    rig.dialog.showKnob(1, 3, someRecord());
    MidiMenuRig::type(rig.channel, QStringLiteral("9"));
    QCOMPARE(rig.knob.last(), (QVariantList{1, 9, 60, 100, 5, true, true, 20, false, true, false}));
    QCOMPARE(rig.midi.size(), 0);
}

void tst_MidiMenuInput::absoluteAfter7FhLeavesOnlyAbsolute()
{
    MidiMenuRig rig;
    rig.dialog.showKnob(0, 3, shortCut());
    QTest::mouseClick(rig.box("7Fh/01h"), Qt::LeftButton, Qt::NoModifier, {10, 15});
    QCOMPARE(rig.knob.last().at(8).toBool(), true);
    QTest::mouseClick(rig.box("absolute"), Qt::LeftButton, Qt::NoModifier, {10, 15});
    QVERIFY(!rig.box("7Fh/01h")->isChecked());
    QVERIFY(!rig.box("03Fh/41h")->isChecked());
    QVERIFY(rig.box("absolute")->isChecked());
    QCOMPARE(rig.knob.size(), 2);
    QCOMPARE(rig.knob.last().at(8).toBool(), false);
    QCOMPARE(rig.knob.last().at(10).toBool(), true);
}

void tst_MidiMenuInput::atMostOneModeIsChecked_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    const QStringList modes = {QStringLiteral("7Fh/01h"), QStringLiteral("03Fh/41h"),
                               QStringLiteral("absolute")};
    for (const QString &first : modes) {
        for (const QString &second : modes) {
            if (first != second) {
                QTest::addRow("%s, %s", qPrintable(first), qPrintable(second)) << first << second;
            }
        }
    }
}

void tst_MidiMenuInput::atMostOneModeIsChecked()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    MidiMenuRig rig;
    rig.dialog.showKnob(0, 3, shortCut());
    withText<QCheckBox>(rig.dialog, first)->click();
    withText<QCheckBox>(rig.dialog, second)->click();
    QStringList checked;
    for (const char *mode : {"7Fh/01h", "03Fh/41h", "absolute"}) {
        if (rig.box(mode)->isChecked()) {
            checked << QLatin1String(mode);
        }
    }
    QCOMPARE(checked, QStringList{second});
}

void tst_MidiMenuInput::uncheckingAModeLeavesNone()
{
    MidiMenuRig rig;
    rig.dialog.showKnob(0, 3, someRecord());
    rig.box("03Fh/41h")->click();
    for (const char *mode : {"7Fh/01h", "03Fh/41h", "absolute"}) {
        QVERIFY(!rig.box(mode)->isChecked());
    }
    QCOMPARE(rig.knob.last(), (QVariantList{0, 3, 60, 100, 5, true, true, 20, false, false, false}));
}

void tst_MidiMenuInput::ccAndNoteExcludeEachOther()
{
    MidiMenuRig rig;
    rig.dialog.show(0, 13, someRecord());
    rig.box("CC on touch")->click();
    QVERIFY(rig.box("CC on touch")->isChecked());
    QVERIFY(!rig.box("Note on touch")->isChecked());
    QCOMPARE(rig.midi.last().at(5).toBool(), false);
    rig.box("Note on touch")->click();
    QVERIFY(!rig.box("CC on touch")->isChecked());
    QVERIFY(rig.box("Note on touch")->isChecked());
    QCOMPARE(rig.midi.last().at(5).toBool(), true);
    QCOMPARE(rig.midi.size(), 2);
    rig.box("Note on touch")->click();
    QVERIFY(!rig.box("CC on touch")->isChecked());
    QVERIFY(!rig.box("Note on touch")->isChecked());
    QCOMPARE(rig.midi.last().at(5).toBool(), false);
}

void tst_MidiMenuInput::theTouchNumberStaysWhenItsKindChanges()
{
    MidiMenuRig rig;
    rig.dialog.show(0, 13, someRecord());
    rig.box("CC on touch")->click();
    rig.box("Note on touch")->click();
    QCOMPARE(rig.number->text(), QStringLiteral("60"));
    QCOMPARE(rig.midi.last().at(2).toInt(), 60);
}

void tst_MidiMenuInput::uncheckingAfterTouchHidesItsValue()
{
    MidiMenuRig rig;
    rig.dialog.show(0, 13, someRecord());
    QVERIFY(rig.afterValue->isVisible());
    rig.box("After Touch")->click();
    QVERIFY(!rig.afterValue->isVisible());
    rig.box("After Touch")->click();
    QVERIFY(rig.afterValue->isVisible());
}

void tst_MidiMenuInput::theKnobsAfterTouchValueStaysHidden()
{
    MidiMenuRig rig;
    rig.dialog.showKnob(0, 3, someRecord());
    for (int click = 0; click < 3; ++click) {
        QVERIFY(!rig.afterValue->isVisible());
        rig.box("After Touch")->click();
    }
    QVERIFY(!rig.afterValue->isVisible());
}

void tst_MidiMenuInput::okReportsOnceMoreAndCloses()
{
    MidiMenuRig rig;
    rig.dialog.show(1, 13, someRecord());
    QTest::mouseClick(rig.ok(), Qt::LeftButton);
    QCOMPARE(rig.midi.size(), 1);
    QCOMPARE(rig.midi.at(0), (QVariantList{1, 3, 60, 100, 5, true, true}));
    QVERIFY(rig.dialog.isHidden());
}

void tst_MidiMenuInput::okClosesWithAnInvalidFieldToo()
{
    MidiMenuRig rig;
    rig.dialog.show(1, 13, someRecord());
    MidiMenuRig::type(rig.value, QStringLiteral("999"));
    rig.midi.clear();
    QTest::mouseClick(rig.ok(), Qt::LeftButton);
    QCOMPARE(rig.midi.size(), 0);
    QVERIFY(rig.dialog.isHidden());
}

void tst_MidiMenuInput::returnIsOk()
{
    MidiMenuRig rig;
    rig.dialog.show(0, 13, someRecord());
    QTest::keyClick(rig.value, Qt::Key_Return);
    QCOMPARE(rig.midi.size(), 1);
    QVERIFY(rig.dialog.isHidden());
}

void tst_MidiMenuInput::escapeClosesWithoutReporting()
{
    MidiMenuRig rig;
    rig.dialog.show(0, 13, someRecord());
    QTest::keyClick(rig.channel, Qt::Key_Escape);
    QVERIFY(rig.dialog.isHidden());
    QCOMPARE(rig.midi.size(), 0);
}

void tst_MidiMenuInput::reportsTheLayerOfTheLastShow()
{
    MidiMenuRig rig;
    for (const int layer : {2, 0, 1}) {
        rig.dialog.show(layer, 13, someRecord());
        QTest::mouseClick(rig.ok(), Qt::LeftButton);
        QCOMPARE(rig.midi.takeFirst().at(0).toInt(), layer);
    }
}

QTEST_MAIN(tst_MidiMenuInput)

#include "tst_MidiMenuInput.moc"
