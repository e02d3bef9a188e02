#include "tests/support/main/Main.h"
#include "tests/unit/ui/MidiMenuRig.h"

#include <QLoggingCategory>
#include <QRegularExpression>

namespace
{

const QString semibold = QStringLiteral("Source Sans Pro Semibold");

} // namespace

/// The MIDI dialog as it looks, in both layouts, what it shows of a record, and how it opens and closes.
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

    void theOkPictureIsAtRestAgainAfterHiding();
    void canBeOperatedByKeysAlone();
    void thePageIsDimmedOnEveryShow();
    void takesNoGrabs();
    void logsTheRecordWhenAskedTo();
};

void tst_MidiMenu::isBuiltHiddenWithALowPanel()
{
    const MidiMenuRig rig;
    QVERIFY(rig.dialog.isHidden());
    QCOMPARE(panelOf(rig.dialog)->size(), QSize(304, 200));
    const QSize screen = QGuiApplication::primaryScreen()->geometry().size();
    const QPoint window((screen.width() - 900) / 2, (screen.height() - 650) / 2);
    QCOMPARE(panelOf(rig.dialog)->pos() + window,
             QPoint((screen.width() - 1 - 303) / 2, (screen.height() - 1 - 199) / 2));
}

void tst_MidiMenu::labelsLookAsDesigned()
{
    const MidiMenuRig rig;
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
    const MidiMenuRig rig;
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
    const MidiMenuRig rig;
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
    MidiMenuRig rig;
    QCOMPARE(rig.box("Note on touch")->x(), 545);
    rig.dialog.show(0, 13, someRecord());
    QCOMPARE(rig.box("Note on touch")->x(), 45);
}

void tst_MidiMenu::theButtonLayout()
{
    MidiMenuRig rig;
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
    MidiMenuRig rig;
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
    MidiMenuRig rig;
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
    MidiMenuRig rig;
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
    MidiMenuRig rig;
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
    MidiMenuRig rig;
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
    MidiMenuRig rig;
    rig.dialog.showKnob(0, 3, shortCut());
    QCheckBox *cc = rig.box("CC on touch");
    QCheckBox *note = rig.box("Note on touch");
    QVERIFY(!cc->isChecked());
    QVERIFY(!note->isChecked());
    const auto number = [&] { return rig.knob.takeLast().at(2).toInt(); };
    MidiMenuRig::type(rig.channel, QStringLiteral("2"));
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
    MidiMenuRig rig;
    rig.dialog.setSubject(QStringLiteral("Button 3, Shift 1"));
    rig.dialog.show(1, 13, someRecord());
    QVERIFY(rig.label("Button 3, Shift 1")->isVisible());
    QCOMPARE(rig.dialog.accessibleDescription(), QStringLiteral("Button 3, Shift 1"));
}

void tst_MidiMenu::aRecordWithoutReleaseHidesItsValue()
{
    MidiMenuRig rig;
    shortCut record = someRecord();
    record.v_off_enable = false;
    rig.dialog.show(0, 13, record);
    QVERIFY(!rig.box("After Touch")->isChecked());
    QVERIFY(!rig.afterValue->isVisible());
    QTest::mouseClick(rig.box("After Touch"), Qt::LeftButton, Qt::NoModifier, {10, 15});
    QVERIFY(rig.afterValue->isVisible());
}

void tst_MidiMenu::theOkPictureIsAtRestAgainAfterHiding()
{
    MidiMenuRig rig;
    rig.dialog.show(1, 13, someRecord());
    QLabel *ok = rig.ok();
    QString whileReporting;
    connect(&rig.dialog, &MidiMenu::newMidi, ok, [&] { whileReporting = ok->styleSheet(); });
    QTest::mouseClick(ok, Qt::LeftButton);
    QCOMPARE(whileReporting, QStringLiteral("background-image: url(:/buttons/ok_1.png);"));
    QCOMPARE(ok->styleSheet(), QStringLiteral("background-image: url(:/buttons/ok_0.png);"));
}

void tst_MidiMenu::canBeOperatedByKeysAlone()
{
    MidiMenuRig rig;
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

void tst_MidiMenu::thePageIsDimmedOnEveryShow()
{
    MidiMenuRig rig;
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
    MidiMenuRig rig;
    rig.dialog.show(0, 13, someRecord());
    QVERIFY(QTest::qWaitForWindowExposed(&rig.dialog));
    QVERIFY(!QWidget::mouseGrabber());
    QVERIFY(!QWidget::keyboardGrabber());
}

void tst_MidiMenu::logsTheRecordWhenAskedTo()
{
    QLoggingCategory::setFilterRules(QStringLiteral("veltrix.ui.debug=true"));
    MidiMenuRig rig;
    const QRegularExpression line(QStringLiteral("^buttonShortCut:.* 60 100 5 "));
    QTest::ignoreMessage(QtDebugMsg, line);
    rig.dialog.show(0, 13, someRecord());
    QTest::ignoreMessage(QtDebugMsg, line);
    rig.dialog.showKnob(0, 3, someRecord());
    QLoggingCategory::setFilterRules(QString());
}

QTEST_MAIN(tst_MidiMenu)

#include "tst_MidiMenu.moc"
