#include "tests/support/main/Main.h"
#include "tests/unit/ui/DialogRig.h"
#include "ui/MidiMenu.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QSignalSpy>

namespace
{

const QString semibold = QStringLiteral("Source Sans Pro Semibold");
const QString red = QStringLiteral("QLineEdit { color : red;}");

shortCut someRecord()
{
    shortCut record;
    record.channel = 3;
    record.cc = 60;
    record.v_on = 100;
    record.v_off = 5;
    record.note = true;
    record.v_off_enable = true;
    record.knobcc = 20;
    record.m3fh = true;
    return record;
}

/// The dialog over its window, its controls, and what it has reported.
struct Rig {
    Rig()
        : dialog(window.page)
        , midi(&dialog, &MidiMenu::newMidi)
        , knob(&dialog, &MidiMenu::newMidiKnob)
    {
        // In the order of the table, which is that in which they were made.
        const QList<QLineEdit *> edits = dialog.findChildren<QLineEdit *>();
        channel = edits.value(0);
        knobCC = edits.value(1);
        number = edits.value(2);
        value = edits.value(3);
        afterValue = edits.value(4);
    }

    QCheckBox *box(const char *text) const { return withText<QCheckBox>(dialog, QLatin1String(text)); }
    QLabel *label(const char *text) const { return withText<QLabel>(dialog, QLatin1String(text)); }
    QLabel *ok() const { return withPicture(dialog, QStringLiteral("ok_0")); }

    static void type(QLineEdit *edit, const QString &text)
    {
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Delete);
        QTest::keyClicks(edit, text);
    }

    PageWindow window;
    MidiMenu dialog;
    QSignalSpy midi;
    QSignalSpy knob;
    QLineEdit *channel;
    QLineEdit *knobCC;
    QLineEdit *number;
    QLineEdit *value;
    QLineEdit *afterValue;
};

} // namespace

class tst_MidiMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { AppFonts::load(); }

    void isBuiltHiddenWithALowPanel();
    void labelsLookAsDesigned();
    void checkBoxesLookAsDesigned();
    void fieldsLookAsDesigned();
    void noteOnTouchStandsBesideThePanelBeforeTheFirstShow();
    void theButtonLayout();
    void theKnobLayout();
    void oneLayoutAfterTheOther();
    void controlsHaveAccessibleNames();

    void showsTheRecord();
    void anEmptyRecordIsShownWithValuesThatWork();
    void aNewRecordOfTheKnobSendsNothingOnTouchUntilToldTo();
    void namesWhatItIsAbout();
    void aRecordWithoutReleaseHidesItsValue();

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
    void theOkPictureIsAtRestAgainAfterHiding();
    void returnIsOk();
    void escapeClosesWithoutReporting();
    void canBeOperatedByKeysAlone();
    void reportsTheLayerOfTheLastShow();
    void thePageIsDimmedOnEveryShow();
    void takesNoGrabs();
    void logsTheRecordWhenAskedTo();
};

void tst_MidiMenu::isBuiltHiddenWithALowPanel()
{
    const Rig rig;
    QVERIFY(rig.dialog.isHidden());
    QCOMPARE(panelOf(rig.dialog)->size(), QSize(304, 200));
    const QSize screen = QGuiApplication::primaryScreen()->geometry().size();
    const QPoint window((screen.width() - 900) / 2, (screen.height() - 650) / 2);
    QCOMPARE(panelOf(rig.dialog)->pos() + window,
             QPoint((screen.width() - 1 - 303) / 2, (screen.height() - 1 - 199) / 2));
}

void tst_MidiMenu::labelsLookAsDesigned()
{
    const Rig rig;
    compareLook(rig.label("MIDI"), {{105, 8, 100, 16},
                                    QStringLiteral("QLabel { color :#414141;}"),
                                    QStringLiteral("Source Sans Pro ExtraLight"),
                                    12,
                                    75});
    compareLook(rig.label("Channel"),
                {{45, 50, 67, 30}, QStringLiteral("QLabel { color : #2D2D2D; }"), semibold, 12, 50});
    compareLook(rig.label("CC on move"),
                {{45, 90, 90, 30}, QStringLiteral("QLabel { color : #2D2D2D;}"), semibold, 12, 50});
    compareLook(rig.label("Touch"),
                {{45, 210, 72, 30}, QStringLiteral("QLabel { color : #2D2D2D;}"), semibold, 12, 50});
    QVERIFY(rig.ok());
    QCOMPARE(rig.ok()->geometry(), QRect(205, 300, 87, 22));
}

void tst_MidiMenu::checkBoxesLookAsDesigned()
{
    const Rig rig;
    const QString style = QStringLiteral("QCheckBox { color : #2D2D2D;}");
    compareLook(rig.box("7Fh/01h"), {{45, 122, 105, 30}, style, semibold, 10, 50});
    compareLook(rig.box("03Fh/41h"), {{125, 122, 105, 30}, style, semibold, 10, 50});
    compareLook(rig.box("absolute"), {{200, 122, 105, 30}, style, semibold, 10, 50});
    compareLook(rig.box("CC on touch"), {{45, 162, 110, 30}, style, semibold, 10, 50});
    compareLook(rig.box("Note on touch"),
                {{545, 182, 110, 30}, QStringLiteral("QCheckBox { color : #2D2D2D; }"), semibold, 10, 50});
    compareLook(rig.box("After Touch"), {{45, 250, 105, 30}, style, semibold, 12, 50});
}

void tst_MidiMenu::fieldsLookAsDesigned()
{
    const Rig rig;
    const QString plain = QStringLiteral("QLineEdit { color : #2D2D2D;}");
    const QString spaced = QStringLiteral("QLineEdit { color : #2D2D2D; }");
    compareLook(rig.channel, {{160, 50, 100, 30}, plain, semibold, 12, 50});
    compareLook(rig.knobCC, {{160, 90, 100, 30}, spaced, semibold, 12, 50});
    compareLook(rig.number, {{160, 170, 100, 30}, plain, semibold, 12, 50});
    compareLook(rig.value, {{160, 210, 100, 30}, spaced, semibold, 12, 50});
    compareLook(rig.afterValue, {{160, 250, 100, 30},
                                 QStringLiteral("QLineEdit { color : #2D2D2D;  background-color:white}"),
                                 semibold,
                                 12,
                                 50});
}

void tst_MidiMenu::noteOnTouchStandsBesideThePanelBeforeTheFirstShow()
{
    Rig rig;
    QCOMPARE(rig.box("Note on touch")->x(), 545);
    rig.dialog.show(0, 13, someRecord());
    QCOMPARE(rig.box("Note on touch")->x(), 45);
}

void tst_MidiMenu::theButtonLayout()
{
    Rig rig;
    rig.dialog.show(0, 13, someRecord());
    QCOMPARE(panelOf(rig.dialog)->size(), QSize(304, 280));
    QCOMPARE(rig.label("MIDI")->geometry(), QRect(140, 8, 90, 16));
    QCOMPARE(rig.box("CC on touch")->geometry(), QRect(45, 82, 110, 30));
    QCOMPARE(rig.box("Note on touch")->geometry(), QRect(45, 102, 110, 30));
    QCOMPARE(rig.label("Touch")->geometry(), QRect(45, 130, 72, 30));
    QCOMPARE(rig.box("After Touch")->geometry(), QRect(45, 170, 105, 30));
    QCOMPARE(rig.number->geometry(), QRect(160, 90, 100, 30));
    QCOMPARE(rig.value->geometry(), QRect(160, 130, 100, 30));
    QCOMPARE(rig.afterValue->geometry(), QRect(160, 170, 100, 30));
    QCOMPARE(rig.ok()->geometry(), QRect(205, 250, 87, 22));
    QVERIFY(rig.channel->isVisible());
    QVERIFY(rig.number->isVisible());
    QVERIFY(rig.value->isVisible());
    QVERIFY(rig.afterValue->isVisible());
    QVERIFY(!rig.knobCC->isVisible());
    QVERIFY(!rig.label("CC on move")->isVisible());
    for (const char *mode : {"7Fh/01h", "03Fh/41h", "absolute"}) {
        QVERIFY(!rig.box(mode)->isVisible());
    }
}

void tst_MidiMenu::theKnobLayout()
{
    Rig rig;
    rig.dialog.showKnob(0, 3, someRecord());
    QCOMPARE(panelOf(rig.dialog)->size(), QSize(304, 330));
    QCOMPARE(rig.label("MIDI FOR KNOB")->geometry(), QRect(100, 8, 120, 16));
    QCOMPARE(rig.box("CC on touch")->geometry(), QRect(45, 162, 110, 30));
    QCOMPARE(rig.box("Note on touch")->geometry(), QRect(45, 182, 110, 30));
    QCOMPARE(rig.label("Touch")->geometry(), QRect(45, 210, 72, 30));
    QCOMPARE(rig.box("After Touch")->geometry(), QRect(45, 250, 105, 30));
    QCOMPARE(rig.number->geometry(), QRect(160, 170, 100, 30));
    QCOMPARE(rig.value->geometry(), QRect(160, 210, 100, 30));
    QCOMPARE(rig.afterValue->geometry(), QRect(160, 250, 100, 30));
    QCOMPARE(rig.ok()->geometry(), QRect(205, 300, 87, 22));
    QVERIFY(rig.channel->isVisible());
    QVERIFY(rig.knobCC->isVisible());
    QVERIFY(rig.label("CC on move")->isVisible());
    for (const char *box :
         {"7Fh/01h", "03Fh/41h", "absolute", "CC on touch", "Note on touch", "After Touch"}) {
        QVERIFY2(rig.box(box)->isVisible(), box);
    }
    QVERIFY(!rig.number->isVisible());
    QVERIFY(!rig.value->isVisible());
    QVERIFY(!rig.afterValue->isVisible());
}

void tst_MidiMenu::oneLayoutAfterTheOther()
{
    Rig rig;
    rig.dialog.showKnob(0, 3, someRecord());
    rig.dialog.hide();
    rig.dialog.show(0, 13, someRecord());
    QCOMPARE(panelOf(rig.dialog)->height(), 280);
    QVERIFY(rig.number->isVisible());
    QVERIFY(!rig.knobCC->isVisible());
    rig.dialog.hide();
    rig.dialog.showKnob(0, 3, someRecord());
    QCOMPARE(panelOf(rig.dialog)->height(), 330);
    QVERIFY(!rig.number->isVisible());
    QVERIFY(rig.knobCC->isVisible());
}

void tst_MidiMenu::controlsHaveAccessibleNames()
{
    Rig rig;
    QStringList names;
    for (const QLineEdit *edit : rig.dialog.findChildren<QLineEdit *>()) {
        names << edit->accessibleName();
        QVERIFY(!edit->toolTip().isEmpty());
    }
    for (const QCheckBox *box : rig.dialog.findChildren<QCheckBox *>()) {
        names << box->accessibleName();
        QVERIFY(!box->toolTip().isEmpty());
    }
    names << rig.ok()->accessibleName();
    QVERIFY(!names.contains(QString()));
    QCOMPARE(names.removeDuplicates(), 0);
    rig.dialog.showKnob(0, 0, shortCut());
    QCOMPARE(rig.dialog.accessibleName(), QStringLiteral("MIDI FOR KNOB"));
}

void tst_MidiMenu::showsTheRecord()
{
    Rig rig;
    rig.dialog.showKnob(0, 3, someRecord());
    QCOMPARE(rig.channel->text(), QStringLiteral("3"));
    QCOMPARE(rig.knobCC->text(), QStringLiteral("20"));
    QCOMPARE(rig.number->text(), QStringLiteral("60"));
    QCOMPARE(rig.value->text(), QStringLiteral("100"));
    QCOMPARE(rig.afterValue->text(), QStringLiteral("5"));
    QVERIFY(!rig.box("CC on touch")->isChecked());
    QVERIFY(rig.box("Note on touch")->isChecked());
    QVERIFY(rig.box("After Touch")->isChecked());
    QVERIFY(!rig.box("7Fh/01h")->isChecked());
    QVERIFY(rig.box("03Fh/41h")->isChecked());
    QVERIFY(!rig.box("absolute")->isChecked());
    QCOMPARE(rig.knob.size(), 0);
    QCOMPARE(rig.midi.size(), 0);
}

void tst_MidiMenu::anEmptyRecordIsShownWithValuesThatWork()
{
    Rig rig;
    rig.dialog.show(0, 13, shortCut());
    QVERIFY(rig.box("CC on touch")->isChecked());
    QVERIFY(!rig.box("Note on touch")->isChecked());
    QVERIFY(rig.box("After Touch")->isChecked());
    QTest::mouseClick(rig.ok(), Qt::LeftButton);
    QCOMPARE(rig.midi.size(), 1);
    QCOMPARE(rig.midi.at(0), (QVariantList{0, 1, 17, 127, 0, false, true}));

    rig.dialog.showKnob(0, 3, shortCut());
    QTest::mouseClick(rig.ok(), Qt::LeftButton);
    QCOMPARE(rig.knob.at(0), (QVariantList{0, 1, -1, 127, 0, false, true, 16, false, false, true}));
}

void tst_MidiMenu::aNewRecordOfTheKnobSendsNothingOnTouchUntilToldTo()
{
    Rig rig;
    rig.dialog.showKnob(0, 3, shortCut());
    QCheckBox *cc = rig.box("CC on touch");
    QCheckBox *note = rig.box("Note on touch");
    QVERIFY(!cc->isChecked());
    QVERIFY(!note->isChecked());
    const auto number = [&] { return rig.knob.takeLast().at(2).toInt(); };
    Rig::type(rig.channel, QStringLiteral("2"));
    QCOMPARE(number(), -1);
    cc->click();
    QCOMPARE(number(), 17);
    note->click();
    QVERIFY(!cc->isChecked());
    QCOMPARE(number(), 17);
    note->click();
    QCOMPARE(number(), -1);
    cc->click();
    QCOMPARE(number(), 17); // as before

    rig.dialog.showKnob(0, 3, shortCut());
    note->click();
    QCOMPARE(number(), 60);
    rig.dialog.showKnob(0, 3, someRecord()); // which has a note already
    QVERIFY(note->isChecked());
    note->click();
    QCOMPARE(number(), -1);
    note->click();
    QCOMPARE(number(), 60);
}

void tst_MidiMenu::namesWhatItIsAbout()
{
    Rig rig;
    rig.dialog.setSubject(QStringLiteral("Button 3, Shift 1"));
    rig.dialog.show(1, 13, someRecord());
    QVERIFY(rig.label("Button 3, Shift 1")->isVisible());
    QCOMPARE(rig.dialog.accessibleDescription(), QStringLiteral("Button 3, Shift 1"));
}

void tst_MidiMenu::aRecordWithoutReleaseHidesItsValue()
{
    Rig rig;
    shortCut record = someRecord();
    record.v_off_enable = false;
    rig.dialog.show(0, 13, record);
    QVERIFY(!rig.box("After Touch")->isChecked());
    QVERIFY(!rig.afterValue->isVisible());
    QTest::mouseClick(rig.box("After Touch"), Qt::LeftButton, Qt::NoModifier, {10, 15});
    QVERIFY(rig.afterValue->isVisible());
}

void tst_MidiMenu::aChannelOf16IsRedAndNotSent()
{
    Rig rig;
    rig.dialog.show(0, 13, someRecord());
    rig.channel->selectAll();
    QTest::keyClick(rig.channel, Qt::Key_1);
    rig.midi.clear();
    QTest::keyClick(rig.channel, Qt::Key_6);
    QCOMPARE(rig.channel->text(), QStringLiteral("16"));
    QCOMPARE(rig.channel->styleSheet(), red);
    QCOMPARE(rig.midi.size(), 0);
}

void tst_MidiMenu::aChannelOf15IsAccepted()
{
    Rig rig;
    rig.dialog.show(0, 13, someRecord());
    Rig::type(rig.channel, QStringLiteral("15"));
    QCOMPARE(rig.channel->styleSheet(), QStringLiteral("QLineEdit { color : #2D2D2D;}"));
    QCOMPARE(rig.midi.last(), (QVariantList{0, 15, 60, 100, 5, true, true}));
}

void tst_MidiMenu::aStoredChannelOf16IsRedAtOnce()
{
    Rig rig;
    shortCut record = someRecord();
    record.channel = 16;
    rig.dialog.show(0, 13, record);
    QCOMPARE(rig.channel->text(), QStringLiteral("16"));
    QCOMPARE(rig.channel->styleSheet(), red);
    Rig::type(rig.value, QStringLiteral("5"));
    QCOMPARE(rig.midi.size(), 0);
    Rig::type(rig.channel, QStringLiteral("3"));
    QVERIFY(rig.channel->styleSheet() != red);
    QCOMPARE(rig.midi.last().at(1).toInt(), 3);
    rig.dialog.hide();
    rig.dialog.show(0, 13, someRecord());
    QVERIFY(rig.channel->styleSheet() != red);
}

void tst_MidiMenu::aTouchValueOf128IsRedAndNotSent()
{
    Rig rig;
    rig.dialog.show(0, 13, someRecord());
    Rig::type(rig.value, QStringLiteral("12"));
    rig.midi.clear();
    QTest::keyClick(rig.value, Qt::Key_8);
    QCOMPARE(rig.value->styleSheet(), red);
    QCOMPARE(rig.midi.size(), 0);
}

void tst_MidiMenu::aTouchValueOf127IsAccepted()
{
    Rig rig;
    rig.dialog.show(0, 13, someRecord());
    Rig::type(rig.value, QStringLiteral("127"));
    QCOMPARE(rig.value->styleSheet(), QStringLiteral("QLineEdit { color : #2D2D2D; }"));
    QCOMPARE(rig.midi.last(), (QVariantList{0, 3, 60, 127, 5, true, true}));
}

void tst_MidiMenu::limits_data()
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

void tst_MidiMenu::limits()
{
    QFETCH(int, field);
    QFETCH(QString, text);
    QFETCH(bool, valid);
    Rig rig;
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

void tst_MidiMenu::redGoesWhenTheTextIsValidAgain()
{
    Rig rig;
    rig.dialog.show(0, 13, someRecord());
    Rig::type(rig.afterValue, QStringLiteral("500"));
    QCOMPARE(rig.afterValue->styleSheet(), red);
    QTest::keyClick(rig.afterValue, Qt::Key_Backspace);
    QCOMPARE(rig.afterValue->styleSheet(),
             QStringLiteral("QLineEdit { color : #2D2D2D;  background-color:white}"));
    QCOMPARE(rig.midi.last().at(4).toInt(), 50);

    Rig::type(rig.afterValue, QStringLiteral("500"));
    rig.dialog.hide();
    rig.dialog.show(0, 13, someRecord());
    QCOMPARE(rig.afterValue->text(), QStringLiteral("5"));
    QVERIFY(rig.afterValue->styleSheet() != red);
}

void tst_MidiMenu::everyValidKeystrokeIsReported()
{
    Rig rig;
    rig.dialog.show(2, 13, someRecord());
    rig.number->selectAll();
    QTest::keyClicks(rig.number, QStringLiteral("123"));
    QCOMPARE(rig.midi.size(), 3);
    QCOMPARE(rig.midi.at(0), (QVariantList{2, 3, 1, 100, 5, true, true}));
    QCOMPARE(rig.midi.at(1), (QVariantList{2, 3, 12, 100, 5, true, true}));
    QCOMPARE(rig.midi.at(2), (QVariantList{2, 3, 123, 100, 5, true, true}));
    QCOMPARE(rig.knob.size(), 0);
}

void tst_MidiMenu::aHiddenFieldDoesNotHinder()
{
    Rig rig;
    shortCut record = someRecord();
    record.v_on = 300;
    rig.dialog.showKnob(0, 3, record);
    Rig::type(rig.knobCC, QStringLiteral("7"));
    QCOMPARE(rig.knob.last(), (QVariantList{0, 3, 60, 300, 5, true, true, 7, false, true, false}));
}

void tst_MidiMenu::aHiddenFieldKeepsItsLastValidValue()
{
    Rig rig;
    rig.dialog.show(0, 13, someRecord());
    Rig::type(rig.afterValue, QStringLiteral("44"));
    Rig::type(rig.afterValue, QStringLiteral("x"));
    rig.midi.clear();
    QTest::mouseClick(rig.box("After Touch"), Qt::LeftButton, Qt::NoModifier, {10, 15});
    QTest::mouseClick(rig.ok(), Qt::LeftButton);
    QCOMPARE(rig.midi.last(), (QVariantList{0, 3, 60, 100, 44, true, false}));
}

void tst_MidiMenu::inKnobModeTheTouchIsTheRecords()
{
    Rig rig;
    rig.dialog.showKnob(1, 3, someRecord());
    Rig::type(rig.channel, QStringLiteral("9"));
    QCOMPARE(rig.knob.last(), (QVariantList{1, 9, 60, 100, 5, true, true, 20, false, true, false}));
    QCOMPARE(rig.midi.size(), 0);
}

void tst_MidiMenu::absoluteAfter7FhLeavesOnlyAbsolute()
{
    Rig rig;
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

void tst_MidiMenu::atMostOneModeIsChecked_data()
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

void tst_MidiMenu::atMostOneModeIsChecked()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    Rig rig;
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

void tst_MidiMenu::uncheckingAModeLeavesNone()
{
    Rig rig;
    rig.dialog.showKnob(0, 3, someRecord());
    rig.box("03Fh/41h")->click();
    for (const char *mode : {"7Fh/01h", "03Fh/41h", "absolute"}) {
        QVERIFY(!rig.box(mode)->isChecked());
    }
    QCOMPARE(rig.knob.last(), (QVariantList{0, 3, 60, 100, 5, true, true, 20, false, false, false}));
}

void tst_MidiMenu::ccAndNoteExcludeEachOther()
{
    Rig rig;
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

void tst_MidiMenu::theTouchNumberStaysWhenItsKindChanges()
{
    Rig rig;
    rig.dialog.show(0, 13, someRecord());
    rig.box("CC on touch")->click();
    rig.box("Note on touch")->click();
    QCOMPARE(rig.number->text(), QStringLiteral("60"));
    QCOMPARE(rig.midi.last().at(2).toInt(), 60);
}

void tst_MidiMenu::uncheckingAfterTouchHidesItsValue()
{
    Rig rig;
    rig.dialog.show(0, 13, someRecord());
    QVERIFY(rig.afterValue->isVisible());
    rig.box("After Touch")->click();
    QVERIFY(!rig.afterValue->isVisible());
    rig.box("After Touch")->click();
    QVERIFY(rig.afterValue->isVisible());
}

void tst_MidiMenu::theKnobsAfterTouchValueStaysHidden()
{
    Rig rig;
    rig.dialog.showKnob(0, 3, someRecord());
    for (int click = 0; click < 3; ++click) {
        QVERIFY(!rig.afterValue->isVisible());
        rig.box("After Touch")->click();
    }
    QVERIFY(!rig.afterValue->isVisible());
}

void tst_MidiMenu::okReportsOnceMoreAndCloses()
{
    Rig rig;
    rig.dialog.show(1, 13, someRecord());
    QTest::mouseClick(rig.ok(), Qt::LeftButton);
    QCOMPARE(rig.midi.size(), 1);
    QCOMPARE(rig.midi.at(0), (QVariantList{1, 3, 60, 100, 5, true, true}));
    QVERIFY(rig.dialog.isHidden());
}

void tst_MidiMenu::okClosesWithAnInvalidFieldToo()
{
    Rig rig;
    rig.dialog.show(1, 13, someRecord());
    Rig::type(rig.value, QStringLiteral("999"));
    rig.midi.clear();
    QTest::mouseClick(rig.ok(), Qt::LeftButton);
    QCOMPARE(rig.midi.size(), 0);
    QVERIFY(rig.dialog.isHidden());
}

void tst_MidiMenu::theOkPictureIsAtRestAgainAfterHiding()
{
    Rig rig;
    rig.dialog.show(1, 13, someRecord());
    QLabel *ok = rig.ok();
    QString whileReporting;
    connect(&rig.dialog, &MidiMenu::newMidi, ok, [&] { whileReporting = ok->styleSheet(); });
    QTest::mouseClick(ok, Qt::LeftButton);
    QCOMPARE(whileReporting, QStringLiteral("background-image: url(:/buttons/ok_1.png);"));
    QCOMPARE(ok->styleSheet(), QStringLiteral("background-image: url(:/buttons/ok_0.png);"));
}

void tst_MidiMenu::returnIsOk()
{
    Rig rig;
    rig.dialog.show(0, 13, someRecord());
    QTest::keyClick(rig.value, Qt::Key_Return);
    QCOMPARE(rig.midi.size(), 1);
    QVERIFY(rig.dialog.isHidden());
}

void tst_MidiMenu::escapeClosesWithoutReporting()
{
    Rig rig;
    rig.dialog.show(0, 13, someRecord());
    QTest::keyClick(rig.channel, Qt::Key_Escape);
    QVERIFY(rig.dialog.isHidden());
    QCOMPARE(rig.midi.size(), 0);
}

void tst_MidiMenu::canBeOperatedByKeysAlone()
{
    Rig rig;
    QVERIFY(QTest::qWaitForWindowActive(&rig.window));
    rig.dialog.showKnob(0, 3, shortCut());
    QVERIFY(QTest::qWaitForWindowActive(&rig.dialog));
    QTRY_COMPARE(QApplication::focusWidget(), rig.channel);
    QStringList order;
    for (int i = 0; i < 9; ++i) {
        order << QApplication::focusWidget()->accessibleName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(order,
             (QStringList{QStringLiteral("Channel"), QStringLiteral("Controller that turning sends"),
                          QStringLiteral("7Fh/01h"), QStringLiteral("03Fh/41h"), QStringLiteral("absolute"),
                          QStringLiteral("CC on touch"), QStringLiteral("Note on touch"),
                          QStringLiteral("After Touch"), QStringLiteral("OK")}));
    QTest::keyClick(rig.ok(), Qt::Key_Space);
    QVERIFY(rig.dialog.isHidden());
}

void tst_MidiMenu::reportsTheLayerOfTheLastShow()
{
    Rig rig;
    for (const int layer : {2, 0, 1}) {
        rig.dialog.show(layer, 13, someRecord());
        QTest::mouseClick(rig.ok(), Qt::LeftButton);
        QCOMPARE(rig.midi.takeFirst().at(0).toInt(), layer);
    }
}

void tst_MidiMenu::thePageIsDimmedOnEveryShow()
{
    Rig rig;
    QSignalSpy blur(&rig.dialog, &MidiMenu::setBlur);
    rig.dialog.show(0, 13, someRecord());
    QVERIFY(rig.window.isDimmed());
    rig.dialog.hide();
    rig.dialog.showKnob(0, 3, someRecord());
    QCOMPARE(blur.size(), 2);
}

// The fields and boxes want their own clicks.
void tst_MidiMenu::takesNoGrabs()
{
    Rig rig;
    rig.dialog.show(0, 13, someRecord());
    QVERIFY(QTest::qWaitForWindowExposed(&rig.dialog));
    QVERIFY(!QWidget::mouseGrabber());
    QVERIFY(!QWidget::keyboardGrabber());
}

void tst_MidiMenu::logsTheRecordWhenAskedTo()
{
    QLoggingCategory::setFilterRules(QStringLiteral("veltrix.ui.debug=true"));
    Rig rig;
    const QRegularExpression line(QStringLiteral("^buttonShortCut:.* 60 100 5 "));
    QTest::ignoreMessage(QtDebugMsg, line);
    rig.dialog.show(0, 13, someRecord());
    QTest::ignoreMessage(QtDebugMsg, line);
    rig.dialog.showKnob(0, 3, someRecord());
    QLoggingCategory::setFilterRules(QString());
}

QTEST_MAIN(tst_MidiMenu)

#include "tst_MidiMenu.moc"
